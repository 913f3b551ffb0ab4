#include "ui/textures/level_thumb.h"

#include <algorithm>
#include <cmath>

#include "core/catalog.h"
#include "platform/image.h"
#include "ui/gpu.h"

namespace ui {

namespace {

struct ThumbRequest {
  std::string path;
  int w, h;
};

// The painter draws in the same numbers the caller passed as pixels while
// the texture carries the HiDPI device scale; at scale 1 the picture exactly
// fills the texture.
void paintThumb(cairo_t* cr, void* user) {
  const auto* req = static_cast<const ThumbRequest*>(user);
  cairo_set_source_rgb(cr, 0, 0, 0);
  cairo_rectangle(cr, 0, 0, req->w, req->h);
  cairo_fill(cr);
  // Decoded just large enough to cover the thumbnail (a JPEG is reduced
  // while decoding, then by area mean, which downscales cleanly); dropped
  // right after painting.
  int fullW = 0, fullH = 0;
  if (!platform::imageSize(req->path, &fullW, &fullH) || fullW < 1 || fullH < 1) return;
  const double cover = std::max(static_cast<double>(req->w) / fullW, static_cast<double>(req->h) / fullH);
  cairo_surface_t* pic = platform::loadImage(req->path, static_cast<int>(std::ceil(fullW * cover)),
                                             static_cast<int>(std::ceil(fullH * cover)));
  if (!pic) return;
  const int iw = cairo_image_surface_get_width(pic), ih = cairo_image_surface_get_height(pic);
  if (iw > 0 && ih > 0) {
    const double s = std::max(static_cast<double>(req->w) / iw, static_cast<double>(req->h) / ih);
    cairo_save(cr);
    cairo_rectangle(cr, 0, 0, req->w, req->h);
    cairo_clip(cr);
    cairo_translate(cr, (req->w - iw * s) * 0.5, (req->h - ih * s) * 0.5);
    cairo_scale(cr, s, s);
    cairo_set_source_surface(cr, pic, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_restore(cr);
  }
  cairo_surface_destroy(pic);
}

}  // namespace

std::string levelThumbKey(const std::string& levelId, bool blurred, int w, int h) {
  return "thumb_" + levelId + (blurred ? "_b_" : "_s_") + std::to_string(w) + "x" + std::to_string(h);
}

SDL_Texture* levelThumb(const std::string& levelId, bool blurred, int w, int h) {
  const core::Level* level = core::levelById(levelId);
  if (w < 1 || h < 1 || !level) return nullptr;
  ThumbRequest req{blurred ? core::levelBlurPath(*level) : core::levelImagePath(*level), w, h};
  return gpuTexture(levelThumbKey(levelId, blurred, w, h), w, h, paintThumb, &req);
}

}  // namespace ui
