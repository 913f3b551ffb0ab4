// The upper drawing layer: one transparent full-window cairo surface that the
// screens draw into during the frame, uploaded as one streaming texture and
// composited over the GPU draws at the end. Both are kept across frames and
// remade only when the renderer's output size changes.
#pragma once

#include <SDL.h>
#include <cairo.h>

namespace ui {

class FrameLayer {
 public:
  FrameLayer() = default;
  FrameLayer(const FrameLayer&) = delete;
  FrameLayer& operator=(const FrameLayer&) = delete;
  ~FrameLayer();

  // (Re)makes surface and texture when there are none or the size differs.
  void ensure(SDL_Renderer* renderer, int w, int h);
  // A fresh context on the cleared surface, scaled to logical units. The
  // layer owns it until finishDrawing().
  cairo_t* begin(double scale);
  void finishDrawing();
  // Uploads the surface and copies it over the whole render target.
  void composite(SDL_Renderer* renderer);
  void release();

  int width() const { return w_; }
  int height() const { return h_; }
  cairo_surface_t* surface() const { return surface_; }
  // True when the renderer refused the premultiplied blend mode and the
  // surface is converted to straight alpha on upload.
  bool straightAlpha() const { return straightAlpha_; }

 private:
  cairo_surface_t* surface_ = nullptr;
  SDL_Texture* texture_ = nullptr;
  cairo_t* cr_ = nullptr;
  int w_ = 0, h_ = 0;
  bool straightAlpha_ = false;
};

}  // namespace ui
