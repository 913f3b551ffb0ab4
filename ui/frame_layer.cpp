#include "ui/frame_layer.h"

#include "ui/gpu.h"

namespace ui {

FrameLayer::~FrameLayer() { release(); }

void FrameLayer::release() {
  finishDrawing();
  if (texture_) SDL_DestroyTexture(texture_);
  if (surface_) cairo_surface_destroy(surface_);
  texture_ = nullptr;
  surface_ = nullptr;
  w_ = h_ = 0;
}

void FrameLayer::ensure(SDL_Renderer* renderer, int w, int h) {
  if (surface_ && w == w_ && h == h_) return;
  release();
  w_ = w;
  h_ = h;
  surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
  texture_ = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, w, h);
  straightAlpha_ = false;
  if (texture_ && SDL_SetTextureBlendMode(texture_, premultipliedBlendMode()) != 0) {
    SDL_SetTextureBlendMode(texture_, SDL_BLENDMODE_BLEND);
    straightAlpha_ = true;
  }
}

cairo_t* FrameLayer::begin(double scale) {
  finishDrawing();
  cr_ = cairo_create(surface_);
  cairo_save(cr_);
  cairo_set_operator(cr_, CAIRO_OPERATOR_CLEAR);
  cairo_paint(cr_);
  cairo_restore(cr_);
  cairo_scale(cr_, scale, scale);
  return cr_;
}

void FrameLayer::finishDrawing() {
  if (!cr_) return;
  cairo_destroy(cr_);
  cr_ = nullptr;
  cairo_surface_flush(surface_);
}

void FrameLayer::composite(SDL_Renderer* renderer) {
  if (!texture_ || !uploadSurface(texture_, surface_, straightAlpha_)) return;
  SDL_RenderCopy(renderer, texture_, nullptr, nullptr);
}

}  // namespace ui
