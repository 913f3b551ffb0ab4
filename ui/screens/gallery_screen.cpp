// Every finished puzzle as a card: the picture, its level, grid, time and
// date; a card opens its solve on the solved screen.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/frame.h"
#include "ui/gpu.h"
#include "ui/screens/screens.h"
#include "ui/text.h"
#include "ui/textures/level_thumb.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/format.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/look.h"
#include "ui/widgets/scroll.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kGap = 14;
constexpr double kMargin = 20;
constexpr double kInfoH = 52;  // the card's panel below the picture
constexpr double kRadius = 14;

struct Grid {
  int columns;
  double cardW, pictureH, cardH;
};

Grid gridFor(double width, double height) {
  Grid g;
  g.columns = width >= 1500 ? 4 : width >= 1100 ? 3 : width >= 760 ? 2 : 1;
  g.cardW = (width - 2 * kMargin - kGap * (g.columns - 1)) / g.columns;
  g.pictureH = std::round(std::min(0.42 * height, g.cardW / 1.5));
  g.cardH = g.pictureH + kInfoH;
  return g;
}

class GalleryScreen : public Screen {
 public:
  GalleryScreen() {
    // Solves of pictures the game no longer has cannot be shown.
    for (const store::SolveEntry& e : store::solves()) {
      if (core::levelById(e.imageId)) entries_.push_back(e);
    }
  }

  void update(Ctx& ctx) override {
    thumbsBeginFrame(ctx);
    bool back = false;
    const double headerH = screenHeader(ctx, i18n::tr("gallery.title"), &back);
    if (entries_.empty()) {
      drawTextCentered(ctx.cr, ctx.width * 0.5, ctx.height * 0.5, i18n::tr("gallery.empty"),
                       labelStyle(16, false, kColorText, ctx.width - 48));
    } else {
      drawCards(ctx, headerH);
    }
    if (back) Game::instance().back();
  }

 private:
  void drawCards(Ctx& ctx, double headerH) {
    const Grid g = gridFor(ctx.width, ctx.height);
    const Rect view{0, headerH, ctx.width, ctx.height - headerH};
    const int rows = (static_cast<int>(entries_.size()) + g.columns - 1) / g.columns;
    const double content = kGap + rows * (g.cardH + kGap);
    revealFocus(view, &scroll_);
    applyScroll(ctx, view, content, &scroll_);
    FocusList list(&scroll_);

    gpuSetClip(view.x, view.y, view.w, view.h);
    cairo_save(ctx.cr);
    cairo_rectangle(ctx.cr, view.x, view.y, view.w, view.h);
    cairo_clip(ctx.cr);
    for (size_t i = 0; i < entries_.size(); ++i) {
      const Rect card{(i % g.columns) * (g.cardW + kGap) + kMargin,
                      headerH + kGap + (i / g.columns) * (g.cardH + kGap) - scroll_, g.cardW, g.cardH};
      // The row above and below is painted ahead, with what the frame has left.
      const bool visible = card.y + card.h >= view.y && card.y <= view.y + view.h;
      if (!visible) {
        focusPlaceholder(card);  // still in the keyboard's order
        if (card.y + card.h >= view.y - g.cardH && card.y <= view.y + view.h + g.cardH) thumbFor(entries_[i], card.w, g.pictureH, false);
        continue;
      }
      drawCard(ctx, entries_[i], card, g.pictureH, view);
    }
    cairo_restore(ctx.cr);
    gpuClearClip();
    scrollbar(ctx, view, content, scroll_);
  }

  void drawCard(Ctx& ctx, const store::SolveEntry& e, const Rect& card, double pictureH, const Rect& view) {
    cairo_t* cr = ctx.cr;
    // Only the part of the card below the header answers the pointer.
    const double top = std::max(card.y, view.y);
    const Rect hit{card.x, top, card.w, std::max(0.0, card.y + card.h - top)};
    const bool hovered = ctx.hover(hit);
    // Until its picture is ready the card shows its plain panel.
    if (SDL_Texture* thumb = thumbFor(e, card.w, pictureH, true)) {
      gpuBlit(thumb, card.x, card.y, card.w, pictureH, hovered ? 0.85 : 1.0);
    } else {
      gpuFillRect(card.x, card.y, card.w, pictureH, kColorPanel, 1.0);
    }
    fillRect(cr, Rect{card.x, card.y + pictureH, card.w, kInfoH}, kColorPanel, 1.0);
    // The picture's square corners are covered in the background's colour,
    // so the card reads as one rounded shape.
    cairo_rectangle(cr, card.x, card.y, card.w, card.h);
    roundedRectPath(cr, card, kRadius);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    setColor(cr, backgroundRgb(), 1.0);
    cairo_fill(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
    strokeRoundedRect(cr, card, kRadius, 1, kColorGreen, 1.0);

    const core::Level* level = core::levelById(e.imageId);
    const Rect badge{card.x + 8, card.y + 8, 66, 24};
    fillRoundedRect(cr, badge, 8, 0x000000, 0.65);
    drawLabel(cr, badge, levelBadge(*level), labelStyle(13, true, kColorAccent, badge.w - 8));

    // The clock sits in the blank run between the grid and the time.
    char info[96];
    std::snprintf(info, sizeof info, "%d\xC3\x97%d  \xC2\xB7     %s", e.rows, e.cols, formatTime(e.elapsedMs).c_str());
    const TextStyle infoStyle = labelStyle(13, false, kColorText, card.w - 16);
    const double cx = card.x + card.w * 0.5, bottom = card.y + pictureH;
    const double infoW = drawTextCentered(cr, cx, bottom + 18, info, infoStyle);
    drawClockIcon(cr, cx - infoW * 0.5 + 0.52 * infoW, bottom + 18, 14, kColorAccent, 1.0);
    drawTextCentered(cr, cx, bottom + 38, formatDateTime(e.solvedAt), labelStyle(11, false, kColorMuted, card.w - 16));

    if (pressWidget(ctx, hit, levelBadge(*level))) {
      Game::instance().push(GameState{ScreenKind::Solved, e.imageId, e.rows, e.cols, e.elapsedMs});
    }
  }

  static SDL_Texture* thumbFor(const store::SolveEntry& e, double w, double h, bool visible) {
    const double s = gpuScale();
    return levelThumbInBudget(e.imageId, false, static_cast<int>(std::lround(w * s)),
                              static_cast<int>(std::lround(h * s)), visible);
  }

  std::vector<store::SolveEntry> entries_;
  double scroll_ = 0;
};

}  // namespace

std::unique_ptr<Screen> makeGalleryScreen() { return std::make_unique<GalleryScreen>(); }

}  // namespace ui
