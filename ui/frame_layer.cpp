#include "ui/frame_layer.h"

#include <algorithm>
#include <cmath>

#include "ui/gpu.h"

namespace ui {

namespace {

// The layer between begin() and finishDrawing(), if any.
FrameLayer*& drawingLayer() {
  static FrameLayer* layer = nullptr;
  return layer;
}

}  // namespace

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
  cols_ = (w + kTile - 1) / kTile;
  rows_ = (h + kTile - 1) / kTile;
  drawn_.assign(static_cast<size_t>(cols_) * rows_, 0);
  dirty_.assign(drawn_.size(), 0);
  surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
  texture_ = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, w, h);
  straightAlpha_ = false;
  if (texture_ && SDL_SetTextureBlendMode(texture_, premultipliedBlendMode()) != 0) {
    SDL_SetTextureBlendMode(texture_, SDL_BLENDMODE_BLEND);
    straightAlpha_ = true;
  }
}

template <typename Fn>
void FrameLayer::forEachRun(const std::vector<uint8_t>& tiles, Fn fn) const {
  for (int row = 0; row < rows_; ++row) {
    for (int col = 0; col < cols_;) {
      if (!tiles[row * cols_ + col]) {
        ++col;
        continue;
      }
      const int start = col;
      while (col < cols_ && tiles[row * cols_ + col]) ++col;
      SDL_Rect r{start * kTile, row * kTile, (col - start) * kTile, kTile};
      r.w = std::min(r.w, w_ - r.x);
      r.h = std::min(r.h, h_ - r.y);
      fn(r);
    }
  }
}

cairo_t* FrameLayer::begin(double scale) {
  finishDrawing();
  cr_ = cairo_create(surface_);
  cairo_save(cr_);
  cairo_set_operator(cr_, CAIRO_OPERATOR_CLEAR);
  forEachRun(dirty_, [this](const SDL_Rect& r) { cairo_rectangle(cr_, r.x, r.y, r.w, r.h); });
  cairo_fill(cr_);
  cairo_restore(cr_);
  std::fill(dirty_.begin(), dirty_.end(), 0);
  std::fill(drawn_.begin(), drawn_.end(), 0);
  tracked_ = false;
  cairo_scale(cr_, scale, scale);
  drawingLayer() = this;
  return cr_;
}

void FrameLayer::finishDrawing() {
  if (!cr_) return;
  cairo_destroy(cr_);
  cr_ = nullptr;
  cairo_surface_flush(surface_);
  if (drawingLayer() == this) drawingLayer() = nullptr;
  if (!tracked_) std::fill(drawn_.begin(), drawn_.end(), 1);
  dirty_ = drawn_;
}

void FrameLayer::damage(int x0, int y0, int x1, int y1) {
  if (x1 < 0 || y1 < 0 || x0 >= w_ || y0 >= h_ || x1 < x0 || y1 < y0) return;
  const int c0 = std::max(x0, 0) / kTile, r0 = std::max(y0, 0) / kTile;
  const int c1 = std::min(x1, w_ - 1) / kTile, r1 = std::min(y1, h_ - 1) / kTile;
  for (int row = r0; row <= r1; ++row) {
    for (int col = c0; col <= c1; ++col) drawn_[row * cols_ + col] = 1;
  }
}

void FrameLayer::composite(SDL_Renderer* renderer) {
  unsigned char* data = cairo_image_surface_get_data(surface_);
  if (!texture_ || !data) return;
  const int stride = cairo_image_surface_get_stride(surface_);
  forEachRun(drawn_, [&](const SDL_Rect& r) {
    unsigned char* first = data + static_cast<ptrdiff_t>(r.y) * stride + r.x * 4;
    if (straightAlpha_) unpremultiply(first, r.w, r.h, stride);
    if (SDL_UpdateTexture(texture_, &r, first, stride) == 0) SDL_RenderCopy(renderer, texture_, &r, &r);
  });
}

void layerDamage(cairo_t* cr, double x, double y, double w, double h) {
  FrameLayer* layer = drawingLayer();
  if (!layer || cairo_get_target(cr) != layer->surface()) return;
  double x0 = 1e30, y0 = 1e30, x1 = -1e30, y1 = -1e30;
  for (const auto& [px, py] : {std::pair{x, y}, std::pair{x + w, y}, std::pair{x, y + h}, std::pair{x + w, y + h}}) {
    double dx = px, dy = py;
    cairo_user_to_device(cr, &dx, &dy);
    x0 = std::min(x0, dx);
    y0 = std::min(y0, dy);
    x1 = std::max(x1, dx);
    y1 = std::max(y1, dy);
  }
  // Antialiasing reaches a pixel beyond the geometry.
  const auto bound = [](double v) { return std::clamp(v, -1e6, 1e6); };
  x0 = bound(x0), y0 = bound(y0), x1 = bound(x1), y1 = bound(y1);
  layer->damage(static_cast<int>(std::floor(x0)) - 1, static_cast<int>(std::floor(y0)) - 1,
                static_cast<int>(std::ceil(x1)) + 1, static_cast<int>(std::ceil(y1)) + 1);
}

void layerTrackDamage() {
  if (FrameLayer* layer = drawingLayer(); layer && gpuCaching()) layer->trackDamage();
}

}  // namespace ui
