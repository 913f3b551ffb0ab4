// The finished picture, to look at closely: the level, grid and time in the
// header, the photograph in a zoomable, pannable viewer and one way on.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "platform/image.h"
#include "ui/gpu.h"
#include "ui/screens/photo_viewer.h"
#include "ui/screens/screens.h"
#include "ui/text.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/format.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kFooterH = 84;  // the strip below the viewer that holds Continue
constexpr double kFill = 0.96;   // share of the viewer the fitted picture takes

struct SolvedPaint {
  std::string path;
  int pixelW, pixelH;
  double w, h;  // the same size in the texture's logical units
};

void paintSolved(cairo_t* cr, void* user) {
  const auto* req = static_cast<const SolvedPaint*>(user);
  cairo_surface_t* pic = platform::loadImage(req->path, req->pixelW, req->pixelH);
  if (!pic) return;
  const int iw = cairo_image_surface_get_width(pic), ih = cairo_image_surface_get_height(pic);
  if (iw > 0 && ih > 0) {
    cairo_scale(cr, req->w / iw, req->h / ih);
    cairo_set_source_surface(cr, pic, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
  }
  cairo_surface_destroy(pic);
}

class SolvedScreen : public Screen {
 public:
  SolvedScreen(std::string levelId, int rows, int cols, int64_t elapsedMs)
      : levelId_(std::move(levelId)), rows_(rows), cols_(cols), elapsedMs_(elapsedMs) {}

  void update(Ctx& ctx) override {
    const core::Level* level = core::levelById(levelId_);
    char title[96];
    std::snprintf(title, sizeof title, "%s  \xC2\xB7  %d\xC3\x97%d", level ? levelTitle(*level).c_str() : "", rows_,
                  cols_);
    bool back = false;
    const double headerH = screenHeader(ctx, title, &back);
    TextStyle time = labelStyle(16, true, kColorAccent, 0);
    time.align = kAlignRight;
    drawText(ctx.cr, ctx.width - 20, headerH * 0.5 - 10, formatTime(elapsedMs_), time);

    const Rect area{0, headerH, ctx.width, std::max(0.0, ctx.height - kFooterH - headerH)};
    if (level) viewPicture(ctx, *level, area);

    const double bw = std::min(ctx.width - 64, 240.0);
    const bool next = menuButton(ctx, Rect{(ctx.width - bw) * 0.5, ctx.height - kFooterH + 16, bw, 52},
                                 i18n::tr("common.continue"), true);
    if (back || next) Game::instance().back();
  }

 private:
  void viewPicture(Ctx& ctx, const core::Level& level, const Rect& area) {
    const double aspect = static_cast<double>(level.width) / level.height;
    const double fitW = std::min(kFill * area.w, kFill * area.h * aspect), fitH = fitW / aspect;
    if (fitW < 1 || fitH < 1) return;
    handleInput(ctx, area);
    viewer_.clampPan(fitW, fitH, area.w, area.h);

    // Painted at up to twice the fitted size, so zoom 2 is still sharp.
    const double scale = gpuScale();
    SolvedPaint req{core::levelImagePath(level), 0, 0, 0, 0};
    req.pixelW = static_cast<int>(std::lround(std::min<double>(level.width, scale * 2 * fitW)));
    req.pixelH = std::max(1, static_cast<int>(std::lround(req.pixelW / aspect)));
    req.w = req.pixelW / scale;
    req.h = req.pixelH / scale;
    SDL_Texture* tex = gpuTexture("solved_" + levelId_, req.pixelW, req.pixelH, paintSolved, &req);
    if (!tex) return;
    const double w = fitW * viewer_.zoom, h = fitH * viewer_.zoom;
    gpuSetClip(area.x, area.y, area.w, area.h);
    gpuBlit(tex, area.x + (area.w - w) * 0.5 + viewer_.panX, area.y + (area.h - h) * 0.5 + viewer_.panY, w, h, 1);
    gpuClearClip();
  }

  void handleInput(Ctx& ctx, const Rect& area) {
    const Input& in = ctx.in;
    const bool over = ctx.hover(area);
    if (over && in.wheel != 0) {
      viewer_.wheel(in.wheel, in.mouseX - (area.x + area.w * 0.5), in.mouseY - (area.y + area.h * 0.5));
    }
    if (over && in.doubleClick) viewer_.toggleZoom();
    if (over && in.mousePressed) {
      panning_ = true;
      viewer_.stop();
    }
    if (panning_ && in.mouseDown) {
      viewer_.drag(in.dx, in.dy, ctx.dt);
    } else {
      panning_ = false;
      if (ctx.reducedMotion) viewer_.stop();  // no glide after the hand lets go
      viewer_.coast(ctx.dt);
      if (viewer_.velX != 0 || viewer_.velY != 0) ctx.requestFrame();
    }
  }

  std::string levelId_;
  int rows_, cols_;
  int64_t elapsedMs_;
  PhotoViewer viewer_;
  bool panning_ = false;
};

}  // namespace

std::unique_ptr<Screen> makeSolvedScreen(std::string levelId, int rows, int cols, int64_t elapsedMs) {
  return std::make_unique<SolvedScreen>(std::move(levelId), rows, cols, elapsedMs);
}

}  // namespace ui
