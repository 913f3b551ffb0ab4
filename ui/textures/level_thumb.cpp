#include "ui/textures/level_thumb.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <set>
#include <vector>

#include "core/catalog.h"
#include "platform/fs.h"
#include "platform/image.h"
#include "platform/paths.h"
#include "ui/gpu.h"
#include "ui/textures/thumb_cache.h"

namespace ui {

namespace {

// Each frame spends at most this long painting from photographs (the first
// painting always goes ahead, so every frame makes progress however slow
// the machine) and as long again reading thumbnails of cards off screen
// kept on disk. Visible cards are read from disk without a bound: a
// window's worth costs a few milliseconds and fills in the first frame.
constexpr double kPaintBudgetMs = 10;
// Painted thumbnails waiting for their turn to be written: a window being
// resized paints a size every frame and most are never needed again, so
// only the newest wait.
constexpr size_t kMaxUnwritten = 32;
// Thumbnails kept on disk: every level, sharp and blurred, at five sizes.
constexpr size_t kKeptOnDisk = 400;

using Clock = std::chrono::steady_clock;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

// A painted thumbnail waiting to be written to disk.
struct Unwritten {
  std::string key, path;
  SurfacePtr pic;
};

struct State {
  std::string dir;         // where painted thumbnails are kept; "" when unusable
  bool dirChecked = false;
  bool writable = true;  // until a write fails: then painting goes on without storing
  std::set<std::string> missing;  // keys with no usable entry on disk this run
  // Writing an entry costs about as much as decoding a small picture, so
  // the grids leave it to frames with nothing left to show.
  std::vector<Unwritten> unwritten;
  double paintedMs = 0, readMs = 0;  // spent this frame
  int pending = 0;
  double paintMs = 2 * kPaintBudgetMs;  // a recent painting's cost, smoothed; pessimistic at first
};

State& state() {
  static State s;
  return s;
}

const std::string& cacheDir() {
  State& s = state();
  if (!s.dirChecked) {
    s.dirChecked = true;
    const std::string dir = paths::cacheDir() + "/thumbs";
    if (!paths::cacheDir().empty() && platform::fs::ensureDir(dir)) s.dir = dir;
    pruneCachedThumbs(s.dir, kKeptOnDisk);
  }
  return s.dir;
}

// Paints the picture at `path` cropped to fill w x h, over black; false when
// it could not be read (the thumbnail then stays black).
bool paintThumb(cairo_t* cr, const std::string& path, int w, int h) {
  cairo_set_source_rgb(cr, 0, 0, 0);
  cairo_rectangle(cr, 0, 0, w, h);
  cairo_fill(cr);
  // Decoded just large enough to cover the thumbnail (a JPEG is reduced
  // while decoding, then by area mean, which downscales cleanly); dropped
  // right after painting.
  int fullW = 0, fullH = 0;
  if (!platform::imageSize(path, &fullW, &fullH) || fullW < 1 || fullH < 1) return false;
  const double cover = std::max(static_cast<double>(w) / fullW, static_cast<double>(h) / fullH);
  SurfacePtr pic(platform::loadImage(path, static_cast<int>(std::ceil(fullW * cover)),
                                     static_cast<int>(std::ceil(fullH * cover))));
  if (!pic) return false;
  const int iw = cairo_image_surface_get_width(pic.get()), ih = cairo_image_surface_get_height(pic.get());
  if (iw > 0 && ih > 0) {
    const double s = std::max(static_cast<double>(w) / iw, static_cast<double>(h) / ih);
    cairo_save(cr);
    cairo_rectangle(cr, 0, 0, w, h);
    cairo_clip(cr);
    cairo_translate(cr, (w - iw * s) * 0.5, (h - ih * s) * 0.5);
    cairo_scale(cr, s, s);
    cairo_set_source_surface(cr, pic.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_restore(cr);
  }
  return true;
}

void store(const Unwritten& entry) {
  State& s = state();
  if (s.writable && !cacheDir().empty()) s.writable = storeCachedThumb(s.dir, entry.key, entry.path, entry.pic.get());
  s.missing.erase(entry.key);
}

// The painted picture, w x h pixels, as the disk keeps it; stored now, or
// queued for a quieter frame.
SurfacePtr paintedPicture(const std::string& key, const std::string& path, int w, int h, bool storeNow) {
  SurfacePtr pic(cairo_image_surface_create(CAIRO_FORMAT_RGB24, w, h));
  cairo_t* cr = cairo_create(pic.get());
  const bool loaded = paintThumb(cr, path, w, h);
  cairo_destroy(cr);
  if (!loaded) return pic;
  Unwritten entry{key, path, SurfacePtr(cairo_surface_reference(pic.get()))};
  if (storeNow) {
    store(entry);
  } else {
    std::vector<Unwritten>& queue = state().unwritten;
    queue.push_back(std::move(entry));
    if (queue.size() > kMaxUnwritten) queue.erase(queue.begin());
  }
  return pic;
}

SurfacePtr cachedPicture(const std::string& key, const std::string& path, int w, int h) {
  State& s = state();
  if (cacheDir().empty() || s.missing.count(key)) return nullptr;
  SurfacePtr pic(loadCachedThumb(s.dir, key, path, w, h));
  if (!pic) s.missing.insert(key);
  return pic;
}

// The painter draws in the same numbers the caller passed as pixels while
// the texture carries the HiDPI device scale; at scale 1 the picture exactly
// fills the texture.
void blitPicture(cairo_t* cr, void* user) {
  cairo_set_source_surface(cr, static_cast<cairo_surface_t*>(user), 0, 0);
  cairo_paint(cr);
}

SDL_Texture* upload(const std::string& key, cairo_surface_t* pic, int w, int h) {
  return gpuTexture(key, w, h, blitPicture, pic);
}

double msSince(Clock::time_point t) { return std::chrono::duration<double, std::milli>(Clock::now() - t).count(); }

// Another painting from a photograph fits this frame: for a visible card the
// first one always does, later ones while their expected cost fits what is
// left. Cards off screen wait for every visible one and never overrun the
// budget, counting what reading from disk took this frame.
bool paintFits(bool visible) {
  const State& s = state();
  if (!visible) return s.pending == 0 && s.readMs + s.paintedMs + s.paintMs <= kPaintBudgetMs;
  return s.paintedMs == 0 || s.paintedMs + s.paintMs <= kPaintBudgetMs;
}

// The cache key and the picture file of a thumbnail; false for an unknown
// level or an empty size.
bool request(const std::string& levelId, bool blurred, int w, int h, std::string* key, std::string* path) {
  const core::Level* level = core::levelById(levelId);
  if (w < 1 || h < 1 || !level) return false;
  *key = levelThumbKey(levelId, blurred, w, h);
  *path = blurred ? core::levelBlurPath(*level) : core::levelImagePath(*level);
  return true;
}

}  // namespace

std::string levelThumbKey(const std::string& levelId, bool blurred, int w, int h) {
  return "thumb_" + levelId + (blurred ? "_b_" : "_s_") + std::to_string(w) + "x" + std::to_string(h);
}

SDL_Texture* levelThumb(const std::string& levelId, bool blurred, int w, int h) {
  std::string key, path;
  if (!request(levelId, blurred, w, h, &key, &path)) return nullptr;
  if (SDL_Texture* tex = gpuCachedTexture(key, w, h)) return tex;
  SurfacePtr pic = cachedPicture(key, path, w, h);
  if (!pic) pic = paintedPicture(key, path, w, h, true);
  return upload(key, pic.get(), w, h);
}

void thumbsBeginFrame(Ctx& ctx) {
  State& s = state();
  s.paintedMs = s.readMs = 0;
  // Entries are written once the last frame showed every visible card,
  // within the painting budget.
  const Clock::time_point start = Clock::now();
  while (s.pending == 0 && !s.unwritten.empty() && s.paintedMs < kPaintBudgetMs) {
    store(s.unwritten.back());
    s.unwritten.pop_back();
    s.paintedMs = msSince(start);
  }
  if (s.pending > 0 || !s.unwritten.empty()) ctx.requestFrame();
  s.pending = 0;
}

SDL_Texture* levelThumbInBudget(const std::string& levelId, bool blurred, int w, int h, bool visible) {
  std::string key, path;
  if (!request(levelId, blurred, w, h, &key, &path)) return nullptr;
  if (SDL_Texture* tex = gpuCachedTexture(key, w, h)) return tex;
  State& s = state();
  if (visible || s.readMs < kPaintBudgetMs) {
    const Clock::time_point start = Clock::now();
    SurfacePtr pic = cachedPicture(key, path, w, h);
    s.readMs += msSince(start);
    if (pic) return upload(key, pic.get(), w, h);
  }
  if (!paintFits(visible)) {
    s.pending += visible ? 1 : 0;
    return nullptr;
  }
  const Clock::time_point start = Clock::now();
  SurfacePtr pic = paintedPicture(key, path, w, h, false);
  const double ms = msSince(start);
  s.paintMs = 0.5 * (s.paintMs + ms);
  s.paintedMs += ms;
  return upload(key, pic.get(), w, h);
}

int thumbsPending() { return state().pending; }

}  // namespace ui
