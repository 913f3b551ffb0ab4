// The lower of the frame's two drawing layers: rectangles and textured quads
// drawn straight to the SDL renderer in logical units (multiplied here by the
// HiDPI scale), plus the program's one texture cache, keyed by string.
//
// Textures hold premultiplied alpha and are composited with the premultiplied
// "over" blend mode. Renderers that refuse that mode (SDL's software renderer)
// get ordinary alpha blending instead, and then every cairo surface is turned
// back into straight alpha as it is uploaded, so both renderers show the same
// picture.
#pragma once

#include <SDL.h>
#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace ui {

using PaintFn = void (*)(cairo_t* cr, void* user);
using DrawFn = void (*)(void* user);

void gpuInit(SDL_Renderer* renderer);
void gpuShutdown();
SDL_Renderer* gpuRenderer();
void gpuBeginFrame();
int gpuDrawCalls();
void gpuSetScale(double s);
double gpuScale();

void gpuSetClip(double x, double y, double w, double h);
void gpuClearClip();
void gpuFillRect(double x, double y, double w, double h, uint32_t rgb, double alpha);
void gpuStrokeRect(double x, double y, double w, double h, uint32_t rgb, double alpha);
void gpuBlit(SDL_Texture* tex, double x, double y, double w, double h, double alpha);
// Copies every texel as it is, no blending: for opaque textures that cover
// what lies beneath.
void gpuBlitOpaque(SDL_Texture* tex, double x, double y, double w, double h);
// (cx, cy) is the centre; the quad turns about it by `angle` degrees clockwise.
void gpuBlitRotated(SDL_Texture* tex, double cx, double cy, double w, double h, double angle, double alpha);

// A cairo-painted texture of w x h pixels, painted once per key (and again
// when the same key is asked for at another size). `paint` draws in logical
// units. The key alone decides identity: callers encode in it everything that
// changes the picture. Null without a renderer or on failure.
SDL_Texture* gpuTexture(const std::string& key, int w, int h, PaintFn paint, void* user);
// A render target in the same cache; `draw` issues GPU draws into it when it
// is made, and again on reuse when `redraw` is set.
SDL_Texture* gpuRenderTarget(const std::string& key, int w, int h, DrawFn draw, void* user, bool redraw);

// The blend mode every texture of the layer gets, and whether it is the
// premultiplied one (false: uploads are converted to straight alpha).
SDL_BlendMode gpuBlendMode();
// Whether screens may keep what they drew in cached layers and redraw only
// what changed (on unless the pictures are being compared with the plain
// path that draws everything every frame).
void gpuSetCaching(bool on);
bool gpuCaching();
bool gpuPremultiplied();
size_t gpuCacheSize();
// The cached texture of that key if it is cached at exactly that pixel size
// (its last use refreshed), else null; never paints.
SDL_Texture* gpuCachedTexture(const std::string& key, int w, int h);
bool gpuCached(const std::string& key);
// Destroys the cached texture of that key, if there is one.
void gpuDropTexture(const std::string& key);

// 0 below 0, 255 above 1, else the integer part of alpha * 255 + 0.5.
uint8_t alphaByte(double alpha);
// Each of x, y, w, h times the scale, rounded on its own.
SDL_Rect toPixels(double x, double y, double w, double h, double scale);
// Premultiplied ARGB32 rows to straight alpha, in place.
void unpremultiply(unsigned char* pixels, int w, int h, int stride);
// Copies a flushed cairo ARGB32 surface into a texture of the same size,
// converting to straight alpha first when the layer blends that way (the
// surface's pixels are converted in place).
bool uploadSurface(SDL_Texture* tex, cairo_surface_t* surface, bool straightAlpha);
// The premultiplied "over" operator: source x 1 + destination x (1 - source alpha).
SDL_BlendMode premultipliedBlendMode();

}  // namespace ui
