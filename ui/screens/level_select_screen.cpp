// Every level as a card in a scrolling grid: its thumbnail (blurred until
// the level is solved once), a number badge, the lock of a level not yet
// reached, and one chip per difficulty that starts, resumes or explains.
// After the forty, the player's own pictures under their own heading, each
// with a button that removes it; pictures dropped on the window join them.
#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "core/level_progress.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/gpu.h"
#include "ui/screens/own_pictures.h"
#include "ui/screens/screens.h"
#include "ui/text.h"
#include "ui/textures/level_thumb.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/format.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/scroll.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kGap = 14;      // between cards, and around the grid
constexpr double kMargin = 20;   // left and right of the grid
constexpr double kLowerH = 76;   // the card's chip area below its thumbnail
constexpr double kChipH = 30, kChipGapX = 6, kChipStepY = 36;
constexpr int kChipsPerRow = 3;

// The grid for one frame, from the window size and the header height: the
// built-in levels' cards, the section heading, the player's pictures.
struct Grid {
  int columns = 1;
  double cardW = 0, thumbH = 0, cardH = 0, top = 0;
  int builtIn = static_cast<int>(core::levels().size());

  double rowsHeight(int cards) const { return std::ceil(static_cast<double>(cards) / columns) * (cardH + kGap); }
  Rect section(double scroll, double width) const {
    return Rect{kMargin, top + kGap + rowsHeight(builtIn) - scroll, width - 2 * kMargin, kPictureSectionH};
  }
  Rect card(int i, double scroll) const {
    const bool own = i >= builtIn;
    const int k = own ? i - builtIn : i;
    const double first = top + kGap + (own ? rowsHeight(builtIn) + kPictureSectionH : 0);
    return Rect{(k % columns) * (cardW + kGap) + kMargin, first + (k / columns) * (cardH + kGap) - scroll, cardW,
                cardH};
  }
  double contentHeight(size_t cards) const {
    return rowsHeight(builtIn) + kPictureSectionH + rowsHeight(static_cast<int>(cards) - builtIn) + kGap;
  }
};

Grid gridFor(const Ctx& ctx, double headerH) {
  Grid g;
  g.columns = ctx.width >= 1500 ? 4 : ctx.width >= 1100 ? 3 : ctx.width >= 760 ? 2 : 1;
  g.cardW = (ctx.width - 2 * kMargin - kGap * (g.columns - 1)) / g.columns;
  g.thumbH = std::round(std::min(0.42 * ctx.height, g.cardW / 1.5));
  g.cardH = g.thumbH + kLowerH;
  g.top = headerH;
  return g;
}

// Rows by columns, the order every screen writes a grid in.
std::string gridLabel(const core::DifficultyDef& d) {
  char label[32];
  std::snprintf(label, sizeof label, "%d\xC3\x97%d", d.rows, d.cols);
  return label;
}

ChipState chipState(const core::LevelProgress& e, int k) {
  if (e.inProgress && e.savedDifficulty == k) return 3;
  if (e.solved.count(k)) return 1;
  return e.suggested == k ? 2 : 0;
}

// Masks the card's corners with the background, so the square thumbnail
// (drawn on the GPU layer beneath) shows through a rounded card.
void roundCorners(cairo_t* cr, const Rect& card) {
  cairo_save(cr);
  cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_rectangle(cr, card.x, card.y, card.w, card.h);
  roundedRectPath(cr, card, 14);
  setColor(cr, kColorBackground, 1.0);
  cairo_fill(cr);
  cairo_restore(cr);
}

void drawBadge(cairo_t* cr, const Rect& card, const core::Level& level) {
  const Rect badge{card.x + 8, card.y + 8, 66, 24};
  fillRoundedRect(cr, badge, 8, 0x000000, 0.65);
  TextStyle style;
  style.size = 13;
  style.bold = true;
  style.color = kColorAccent;
  style.maxWidth = badge.w - 8;
  drawTextCentered(cr, badge.x + badge.w * 0.5, badge.y + badge.h * 0.5, levelBadge(level), style);
}

void drawLockCover(cairo_t* cr, const Rect& thumb) {
  gpuFillRect(thumb.x, thumb.y, thumb.w, thumb.h, 0x000000, 0.6);
  const double cx = thumb.x + thumb.w * 0.5, cy = thumb.y + thumb.h * 0.5;
  drawLockIcon(cr, cx, cy - 16, 44, kColorText, 1.0);
  TextStyle style;
  style.size = 13;
  style.bold = true;
  style.color = kColorText;
  style.align = kAlignCenter;
  style.maxWidth = thumb.w - 16;
  drawTextCentered(cr, cx, cy + 20, i18n::tr("levels.locked"), style);
}

uint32_t outlineColor(const core::LevelProgress& e) {
  if (e.inProgress) return kColorAccent;
  return e.solved.empty() ? kColorBorder : kColorGreen;
}

class LevelSelectScreen : public Screen {
 public:
  LevelSelectScreen() { rebuild(); }

  void update(Ctx& ctx) override {
    thumbsBeginFrame(ctx);
    const bool asking = lockOpen_ != 0 || !removing_.empty();
    {
      InputShield beneath(ctx, asking);
      bool back = false;
      const Grid grid = gridFor(ctx, screenHeader(ctx, i18n::tr("levels.title"), &back));
      if (back) {
        Game::instance().back();
        return;
      }
      const Rect viewport{0, grid.top, ctx.width, ctx.height - grid.top};
      if (!ctx.in.dropped.empty()) addDropped(ctx, grid, viewport);
      const double content = grid.contentHeight(entries_.size());
      if (!asking) {
        revealFocus(viewport, &scroll_);
        applyScroll(ctx, viewport, content, &scroll_);
      }
      drawGrid(ctx, grid, viewport);
      scrollbar(ctx, viewport, content, scroll_);
    }
    if (lockOpen_ != 0) explainLock(ctx);
    if (!removing_.empty() && askRemovePicture(ctx, removing_) != 0) {
      removing_.clear();
      rebuild();
    }
  }

 private:
  void rebuild() {
    entries_ = core::levelProgress(store::solves(), store::currentPuzzle());
    shown_.assign(entries_.size(), SDL_Point{0, 0});
  }

  // The pictures dropped on the window join the player's own; the grid
  // scrolls to the last one added.
  void addDropped(const Ctx& ctx, const Grid& grid, const Rect& viewport) {
    const std::vector<std::string> ids = addPictures(ctx.in.dropped);
    rebuild();
    for (size_t i = grid.builtIn; i < entries_.size() && !ids.empty(); ++i) {
      if (entries_[i].level->id != ids.back()) continue;
      const Rect card = grid.card(static_cast<int>(i), 0);
      scroll_ = std::clamp(card.y + card.h + kGap - viewport.y - viewport.h, 0.0,
                           std::max(0.0, grid.contentHeight(entries_.size()) - viewport.h));
    }
  }

  void drawGrid(Ctx& ctx, const Grid& grid, const Rect& viewport) {
    // The chips under the header are cut off: the pointer there is not over them.
    InputShield outside(ctx, !ctx.hover(viewport), Shield::PointerOnly);
    FocusList list(&scroll_);
    gpuSetClip(viewport.x, viewport.y, viewport.w, viewport.h);
    cairo_save(ctx.cr);
    cairo_rectangle(ctx.cr, viewport.x, viewport.y, viewport.w, viewport.h);
    cairo_clip(ctx.cr);
    int firstShown = -1, lastShown = -1;
    for (size_t i = 0; i < entries_.size(); ++i) {
      const Rect card = grid.card(static_cast<int>(i), scroll_);
      if (card.y + card.h <= viewport.y || card.y >= viewport.y + viewport.h) {
        // Not drawn, but still in the keyboard's order.
        for (const core::DifficultyDef& d : core::difficulties()) {
          focusPlaceholder(chipRect(card, grid.thumbH, d.index));
        }
        continue;
      }
      if (firstShown < 0) firstShown = static_cast<int>(i);
      lastShown = static_cast<int>(i);
      drawCard(ctx, i, card, grid.thumbH);
    }
    const Rect section = grid.section(scroll_, ctx.width);
    if (section.y + section.h > viewport.y && section.y < viewport.y + viewport.h) pictureSection(ctx, section);
    cairo_restore(ctx.cr);
    gpuClearClip();
    prefetchAround(grid, firstShown, lastShown);
  }

  // The row above and the row below the visible cards, with what is left
  // of the frame's budget, so scrolling meets painted cards.
  void prefetchAround(const Grid& grid, int first, int last) {
    if (first < 0) return;
    const int n = static_cast<int>(entries_.size());
    for (int i = std::max(0, first - grid.columns); i < std::min(n, last + 1 + grid.columns); ++i) {
      if (i < first || i > last) thumbnail(entries_[i], grid.cardW, grid.thumbH, false);
    }
  }

  static SDL_Texture* thumbnail(const core::LevelProgress& e, double w, double h, bool visible) {
    const double s = gpuScale();
    return levelThumbInBudget(e.level->id, e.solved.empty(), static_cast<int>(std::lround(s * w)),
                              static_cast<int>(std::lround(s * h)), visible);
  }

  // The card's thumbnail, or while it is painted at a new size (the window
  // was resized) the one last shown, stretched, if it is still cached.
  SDL_Texture* thumbnailOrStandIn(size_t i, double w, double h) {
    const core::LevelProgress& e = entries_[i];
    const SDL_Point size{static_cast<int>(std::lround(gpuScale() * w)), static_cast<int>(std::lround(gpuScale() * h))};
    SDL_Texture* tex = thumbnail(e, w, h, true);
    if (tex) {
      shown_[i] = size;
      return tex;
    }
    const SDL_Point last = shown_[i];
    return gpuCachedTexture(levelThumbKey(e.level->id, e.solved.empty(), last.x, last.y), last.x, last.y);
  }

  void drawCard(Ctx& ctx, size_t i, const Rect& card, double thumbH) {
    const core::LevelProgress& e = entries_[i];
    // The large fills go to the GPU layer, beneath the cairo layer's
    // corners, outline, badge, lock and chips: the renderer blends them far
    // more cheaply than cairo would across the whole grid.
    const Rect thumb{card.x, card.y, card.w, thumbH};
    if (SDL_Texture* tex = thumbnailOrStandIn(i, card.w, thumbH)) {
      gpuBlit(tex, thumb.x, thumb.y, thumb.w, thumb.h, 1.0);
    } else {
      gpuFillRect(thumb.x, thumb.y, thumb.w, thumb.h, kColorPanel, 1.0);
    }
    gpuFillRect(card.x, card.y + thumbH, card.w, card.h - thumbH, kColorPanel, 1.0);
    cairo_t* cr = ctx.cr;
    if (e.locked) drawLockCover(cr, thumb);
    roundCorners(cr, card);
    strokeRoundedRect(cr, card, 14, e.inProgress ? 2.0 : 1.0, outlineColor(e), 1.0);
    drawBadge(cr, card, *e.level);
    if (e.level->own && removePictureButton(ctx, thumb)) removing_ = e.level->id;
    drawChips(ctx, e, card, thumbH);
  }

  static Rect chipRect(const Rect& card, double thumbH, int k) {
    const double chipW = (card.w - 16 - 12) / kChipsPerRow;
    return Rect{card.x + 8 + (k % kChipsPerRow) * (chipW + kChipGapX),
                card.y + thumbH + 8 + (k / kChipsPerRow) * kChipStepY, chipW, kChipH};
  }

  void drawChips(Ctx& ctx, const core::LevelProgress& e, const Rect& card, double thumbH) {
    for (const core::DifficultyDef& d : core::difficulties()) {
      const Rect r = chipRect(card, thumbH, d.index);
      if (!difficultyChip(ctx, r, gridLabel(d), chipState(e, d.index))) continue;
      if (e.locked) {
        lockOpen_ = e.level->number;
      } else {
        startLevel(e, d);
      }
    }
  }

  static void startLevel(const core::LevelProgress& e, const core::DifficultyDef& d) {
    const store::SavedPuzzle& saved = store::currentPuzzle();
    const bool resumes = saved.valid && saved.imageId == e.level->id && saved.rows == d.rows && saved.cols == d.cols;
    if (saved.valid && !resumes) store::clearPuzzle();
    GameState next;
    next.screen = ScreenKind::Playing;
    next.levelId = e.level->id;
    next.rows = d.rows;
    next.cols = d.cols;
    Game::instance().push(next);
  }

  void explainLock(Ctx& ctx) {
    const std::string message = i18n::tr(
        "levels.lockedMessage", {{"prev", std::to_string(lockOpen_ - 1)}, {"level", std::to_string(lockOpen_)}});
    if (confirmDialog(ctx, i18n::tr("levels.lockedTitle"), message, i18n::tr("common.ok"), i18n::tr("common.cancel"))) {
      lockOpen_ = 0;
    }
  }

  std::vector<core::LevelProgress> entries_;
  std::vector<SDL_Point> shown_;  // per card, the pixel size of the thumbnail last shown
  double scroll_ = 0;
  int lockOpen_ = 0;  // the number of the level whose lock is explained; 0 none
  std::string removing_;  // the picture whose removal is asked about; empty none
};

}  // namespace

std::unique_ptr<Screen> makeLevelSelectScreen() { return std::make_unique<LevelSelectScreen>(); }

}  // namespace ui
