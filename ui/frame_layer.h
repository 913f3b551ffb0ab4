// The upper drawing layer: one transparent full-window cairo surface that the
// screens draw into during the frame, uploaded as one streaming texture and
// composited over the GPU draws at the end. Both are kept across frames and
// remade only when the renderer's output size changes.
//
// Most of a frame's layer is empty (the playing screen draws a header and
// now and then a hint or a dialog), and clearing, converting, uploading and
// blending the whole window costs as much as the rest of the frame. So the
// surface is cut into tiles, and the drawing primitives (ui/draw.h,
// ui/text.h) report where they drew: only those tiles are cleared next
// frame, uploaded and composited. A screen opts in each frame with
// layerTrackDamage(), promising that all it draws on the layer goes through
// those primitives; otherwise the whole surface is treated as drawn.
#pragma once

#include <SDL.h>
#include <cairo.h>

#include <cstdint>
#include <vector>

namespace ui {

class FrameLayer {
 public:
  static constexpr int kTile = 64;

  FrameLayer() = default;
  FrameLayer(const FrameLayer&) = delete;
  FrameLayer& operator=(const FrameLayer&) = delete;
  ~FrameLayer();

  // (Re)makes surface and texture when there are none or the size differs.
  void ensure(SDL_Renderer* renderer, int w, int h);
  // A fresh context on the surface, cleared where the last frame drew,
  // scaled to logical units. The layer owns it until finishDrawing().
  cairo_t* begin(double scale);
  void finishDrawing();
  // Uploads the drawn tiles and copies them over the render target.
  void composite(SDL_Renderer* renderer);
  void release();

  // Device pixels the frame drew in (clipped to the surface).
  void damage(int x0, int y0, int x1, int y1);
  void trackDamage() { tracked_ = true; }

  int width() const { return w_; }
  int height() const { return h_; }
  cairo_surface_t* surface() const { return surface_; }
  // True when the renderer refused the premultiplied blend mode and the
  // surface is converted to straight alpha on upload.
  bool straightAlpha() const { return straightAlpha_; }

 private:
  // Calls `fn` with each maximal run of drawn tiles along a tile row.
  template <typename Fn>
  void forEachRun(const std::vector<uint8_t>& tiles, Fn fn) const;

  cairo_surface_t* surface_ = nullptr;
  SDL_Texture* texture_ = nullptr;
  cairo_t* cr_ = nullptr;
  int w_ = 0, h_ = 0;
  int cols_ = 0, rows_ = 0;
  std::vector<uint8_t> drawn_;  // per tile, this frame
  std::vector<uint8_t> dirty_;  // per tile, not yet cleared since it was drawn
  bool tracked_ = false;
  bool straightAlpha_ = false;
};

// Where the primitives report what they drew, in cr's user space; ignored
// unless cr draws on the layer of the frame in progress.
void layerDamage(cairo_t* cr, double x, double y, double w, double h);
// The screen's promise for this frame (see above).
void layerTrackDamage();

}  // namespace ui
