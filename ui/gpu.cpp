#include "ui/gpu.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace ui {

namespace {

constexpr size_t kCacheBound = 900;

struct CacheEntry {
  SDL_Texture* texture = nullptr;
  int w = 0, h = 0;
  uint64_t lastUse = 0;
};

struct State {
  SDL_Renderer* renderer = nullptr;
  double scale = 1.0;
  int drawCalls = 0;
  uint64_t frame = 0;
  std::map<std::string, CacheEntry> cache;
  SDL_BlendMode blendMode = SDL_BLENDMODE_BLEND;
  bool caching = true;
};

State& state() {
  static State s;
  return s;
}

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct ContextDeleter {
  void operator()(cairo_t* c) const { cairo_destroy(c); }
};

// kStraight[a][c]: the straight-alpha channel for premultiplied channel c at alpha a.
const std::array<uint8_t, 256 * 256>& straightTable() {
  static const std::array<uint8_t, 256 * 256> table = [] {
    std::array<uint8_t, 256 * 256> t{};
    for (int a = 1; a < 256; ++a) {
      for (int c = 0; c < 256; ++c) t[a * 256 + c] = static_cast<uint8_t>(std::min(255, (c * 255 + a / 2) / a));
    }
    return t;
  }();
  return table;
}

SDL_Rect pixelRect(double x, double y, double w, double h) { return toPixels(x, y, w, h, state().scale); }

void setTextureFade(SDL_Texture* tex, double alpha) {
  const uint8_t a = alphaByte(alpha);
  // Premultiplied texels fade by scaling colour and alpha alike; straight
  // texels only need their alpha scaled.
  const uint8_t c = gpuPremultiplied() ? a : 255;
  SDL_SetTextureAlphaMod(tex, a);
  SDL_SetTextureColorMod(tex, c, c, c);
}

void destroyEntry(std::map<std::string, CacheEntry>::iterator it) {
  SDL_DestroyTexture(it->second.texture);
  state().cache.erase(it);
}

// The cached entry of this key at this size, if any; an entry of the same
// key at another size is dropped.
CacheEntry* reuseOrDrop(const std::string& key, int w, int h) {
  State& s = state();
  auto it = s.cache.find(key);
  if (it == s.cache.end()) return nullptr;
  if (it->second.w == w && it->second.h == h) return &it->second;
  destroyEntry(it);
  return nullptr;
}

// Over the bound, the least recently used third goes at once, so eviction
// does not run again on every following insertion.
void evictIfFull() {
  State& s = state();
  if (s.cache.size() <= kCacheBound) return;
  std::vector<std::pair<uint64_t, std::string>> byUse;
  byUse.reserve(s.cache.size());
  for (const auto& [key, entry] : s.cache) byUse.emplace_back(entry.lastUse, key);
  if (byUse.size() < 3) return;
  std::sort(byUse.begin(), byUse.end());
  const size_t drop = byUse.size() / 3;
  for (size_t i = 0; i < drop; ++i) destroyEntry(s.cache.find(byUse[i].second));
}

void drawIntoTarget(SDL_Texture* tex, DrawFn draw, void* user) {
  SDL_Renderer* r = state().renderer;
  SDL_Texture* previous = SDL_GetRenderTarget(r);
  SDL_SetRenderTarget(r, tex);
  SDL_SetRenderDrawColor(r, 0, 0, 0, 0);
  SDL_RenderClear(r);
  if (draw) draw(user);
  SDL_SetRenderTarget(r, previous);
}

}  // namespace

SDL_BlendMode premultipliedBlendMode() {
  return SDL_ComposeCustomBlendMode(SDL_BLENDFACTOR_ONE, SDL_BLENDFACTOR_ONE_MINUS_SRC_ALPHA, SDL_BLENDOPERATION_ADD,
                                    SDL_BLENDFACTOR_ONE, SDL_BLENDFACTOR_ONE_MINUS_SRC_ALPHA, SDL_BLENDOPERATION_ADD);
}

void gpuInit(SDL_Renderer* renderer) {
  gpuShutdown();
  State& s = state();
  s.renderer = renderer;
  s.blendMode = SDL_BLENDMODE_BLEND;
  if (!renderer) return;
  const SDL_BlendMode premul = premultipliedBlendMode();
  SDL_Texture* probe = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STATIC, 1, 1);
  if (probe && SDL_SetTextureBlendMode(probe, premul) == 0) {
    s.blendMode = premul;
  } else {
    std::fprintf(stderr, "[gpu] kein vormultipliziertes Mischen \xE2\x80\x94 nehme das normale\n");
  }
  if (probe) SDL_DestroyTexture(probe);
}

void gpuShutdown() {
  State& s = state();
  for (auto& [key, entry] : s.cache) SDL_DestroyTexture(entry.texture);
  s.cache.clear();
  s.renderer = nullptr;
}

SDL_Renderer* gpuRenderer() { return state().renderer; }

void gpuBeginFrame() {
  state().drawCalls = 0;
  ++state().frame;
}

int gpuDrawCalls() { return state().drawCalls; }

void gpuSetScale(double s) { state().scale = s > 0 ? s : 1.0; }

double gpuScale() { return state().scale; }

SDL_BlendMode gpuBlendMode() { return state().blendMode; }

void gpuSetCaching(bool on) { state().caching = on; }

bool gpuCaching() { return state().caching; }

bool gpuPremultiplied() { return state().blendMode != SDL_BLENDMODE_BLEND; }

size_t gpuCacheSize() { return state().cache.size(); }

bool gpuCached(const std::string& key) { return state().cache.count(key) != 0; }

void gpuDropTexture(const std::string& key) {
  const auto it = state().cache.find(key);
  if (it != state().cache.end()) destroyEntry(it);
}

SDL_Texture* gpuCachedTexture(const std::string& key, int w, int h) {
  State& s = state();
  const auto it = s.cache.find(key);
  if (it == s.cache.end() || it->second.w != w || it->second.h != h) return nullptr;
  it->second.lastUse = s.frame;
  return it->second.texture;
}

uint8_t alphaByte(double alpha) {
  if (alpha < 0) return 0;
  if (alpha > 1) return 255;
  return static_cast<uint8_t>(static_cast<int>(alpha * 255 + 0.5));
}

SDL_Rect toPixels(double x, double y, double w, double h, double scale) {
  return SDL_Rect{static_cast<int>(std::lround(x * scale)), static_cast<int>(std::lround(y * scale)),
                  static_cast<int>(std::lround(w * scale)), static_cast<int>(std::lround(h * scale))};
}

void gpuSetClip(double x, double y, double w, double h) {
  if (!state().renderer) return;
  const SDL_Rect r = pixelRect(x, y, w, h);
  SDL_RenderSetClipRect(state().renderer, &r);
}

void gpuClearClip() {
  if (state().renderer) SDL_RenderSetClipRect(state().renderer, nullptr);
}

void gpuFillRect(double x, double y, double w, double h, uint32_t rgb, double alpha) {
  SDL_Renderer* r = state().renderer;
  if (!r || w <= 0 || h <= 0) return;
  const SDL_Rect px = pixelRect(x, y, w, h);
  SDL_SetRenderDrawBlendMode(r, SDL_BLENDMODE_BLEND);
  SDL_SetRenderDrawColor(r, (rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255, alphaByte(alpha));
  SDL_RenderFillRect(r, &px);
  ++state().drawCalls;
}

void gpuStrokeRect(double x, double y, double w, double h, uint32_t rgb, double alpha) {
  SDL_Renderer* r = state().renderer;
  if (!r || w <= 0 || h <= 0) return;
  const SDL_Rect px = pixelRect(x, y, w, h);
  SDL_SetRenderDrawBlendMode(r, SDL_BLENDMODE_BLEND);
  SDL_SetRenderDrawColor(r, (rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255, alphaByte(alpha));
  SDL_RenderDrawRect(r, &px);
  ++state().drawCalls;
}

void gpuBlit(SDL_Texture* tex, double x, double y, double w, double h, double alpha) {
  SDL_Renderer* r = state().renderer;
  if (!tex || !r) return;
  setTextureFade(tex, alpha);
  const SDL_Rect px = pixelRect(x, y, w, h);
  SDL_RenderCopy(r, tex, nullptr, &px);
  ++state().drawCalls;
}

void gpuBlitOpaque(SDL_Texture* tex, double x, double y, double w, double h) {
  SDL_Renderer* r = state().renderer;
  if (!tex || !r) return;
  SDL_SetTextureBlendMode(tex, SDL_BLENDMODE_NONE);
  SDL_SetTextureAlphaMod(tex, 255);
  SDL_SetTextureColorMod(tex, 255, 255, 255);
  const SDL_Rect px = pixelRect(x, y, w, h);
  SDL_RenderCopy(r, tex, nullptr, &px);
  ++state().drawCalls;
}

void gpuBlitRotated(SDL_Texture* tex, double cx, double cy, double w, double h, double angle, double alpha) {
  SDL_Renderer* r = state().renderer;
  if (!tex || !r) return;
  setTextureFade(tex, alpha);
  const SDL_Rect px = pixelRect(cx - w * 0.5, cy - h * 0.5, w, h);
  SDL_RenderCopyEx(r, tex, nullptr, &px, angle, nullptr, SDL_FLIP_NONE);
  ++state().drawCalls;
}

void unpremultiply(unsigned char* pixels, int w, int h, int stride) {
  const auto& table = straightTable();
  for (int y = 0; y < h; ++y) {
    uint32_t* row = reinterpret_cast<uint32_t*>(pixels + static_cast<ptrdiff_t>(y) * stride);
    for (int x = 0; x < w; ++x) {
      const uint32_t p = row[x];
      const uint32_t a = p >> 24;
      if (a == 0 || a == 255) continue;  // nothing to undo; most overlay pixels
      const uint8_t* t = &table[a * 256];
      row[x] = (a << 24) | (uint32_t(t[(p >> 16) & 255]) << 16) | (uint32_t(t[(p >> 8) & 255]) << 8) | t[p & 255];
    }
  }
}

bool uploadSurface(SDL_Texture* tex, cairo_surface_t* surface, bool straightAlpha) {
  unsigned char* data = cairo_image_surface_get_data(surface);
  if (!tex || !data) return false;
  const int w = cairo_image_surface_get_width(surface);
  const int h = cairo_image_surface_get_height(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  if (straightAlpha) unpremultiply(data, w, h, stride);
  return SDL_UpdateTexture(tex, nullptr, data, stride) == 0;
}

SDL_Texture* gpuTexture(const std::string& key, int w, int h, PaintFn paint, void* user) {
  State& s = state();
  if (!s.renderer || w < 1 || h < 1) return nullptr;
  if (CacheEntry* cached = reuseOrDrop(key, w, h)) {
    cached->lastUse = s.frame;
    return cached->texture;
  }
  evictIfFull();

  SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  cairo_surface_set_device_scale(surface.get(), s.scale, s.scale);
  {
    std::unique_ptr<cairo_t, ContextDeleter> cr(cairo_create(surface.get()));
    if (paint) paint(cr.get(), user);
  }
  cairo_surface_flush(surface.get());

  SDL_Texture* tex = SDL_CreateTexture(s.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STATIC, w, h);
  if (!tex) return nullptr;
  uploadSurface(tex, surface.get(), !gpuPremultiplied());
  SDL_SetTextureBlendMode(tex, s.blendMode);
  s.cache[key] = CacheEntry{tex, w, h, s.frame};
  return tex;
}

SDL_Texture* gpuRenderTarget(const std::string& key, int w, int h, DrawFn draw, void* user, bool redraw) {
  State& s = state();
  if (!s.renderer || w < 1 || h < 1) return nullptr;
  // Reuse deliberately keeps the entry's creation frame as its last use:
  // render targets are the first candidates when the cache evicts.
  if (CacheEntry* cached = reuseOrDrop(key, w, h)) {
    if (redraw) drawIntoTarget(cached->texture, draw, user);
    return cached->texture;
  }
  SDL_Texture* tex = SDL_CreateTexture(s.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_TARGET, w, h);
  if (!tex) return nullptr;
  SDL_SetTextureBlendMode(tex, s.blendMode);
  drawIntoTarget(tex, draw, user);
  s.cache[key] = CacheEntry{tex, w, h, s.frame};
  return tex;
}

}  // namespace ui
