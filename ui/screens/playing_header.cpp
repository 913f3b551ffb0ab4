// The playing screen's cairo layer: the header with its two rows, the hints,
// the solved banner and the pause cover.
//
// Row 1: back, "Level N · rows×cols · placed/total · time", pause.
// Row 2 (the second control row setting): zoom out, zoom readout, zoom in,
// zoom reset (when zoom is on), then undo, restart and shuffle. In the large
// layout these three show their glyphs, in the compact one their letters.
#include <cmath>
#include <cstdio>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "ui/draw.h"
#include "ui/screens/playing_screen.h"
#include "ui/text.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/format.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kButtonW = 40, kButtonH = 34, kGap = 6;
constexpr double kReadoutW = 64;
constexpr double kHintSeconds = 8;

double rowOneHeight(bool large) { return large ? 56 : 48; }
double rowTwoHeight(bool large) { return large ? 44 : 40; }

TextStyle pillStyle(const Ctx& ctx, double size, double alpha) {
  TextStyle style;
  style.size = size;
  style.bold = true;
  style.alpha = alpha;
  style.maxWidth = ctx.width - 64;
  return style;
}

// The box of a pill of text centred at (cx, cy).
Rect pillRect(const Ctx& ctx, double cx, double cy, const std::string& text, double size) {
  double w = 0, h = 0;
  measureText(ctx.cr, text, pillStyle(ctx, size, 1.0), &w, &h);
  return Rect{cx - w * 0.5 - 18, cy - h * 0.5 - 10, w + 36, h + 20};
}

// A pill of text in the box pillRect gave it, fading with `alpha`.
void pill(Ctx& ctx, const Rect& box, const std::string& text, double size, double alpha) {
  fillRoundedRect(ctx.cr, box, 1000, kColorPanel, 0.92 * alpha);
  drawTextCentered(ctx.cr, box.x + box.w * 0.5, box.y + box.h * 0.5, text, pillStyle(ctx, size, alpha));
}

bool overlap(const Rect& a, const Rect& b) {
  return a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h && b.y < a.y + a.h;
}

}  // namespace

double PlayingScreen::headerHeightFor(const Ctx& ctx, const store::Settings& settings) const {
  const bool large = largeLayout(ctx);
  return rowOneHeight(large) + (settings.showSecondRow ? rowTwoHeight(large) : 0);
}

void PlayingScreen::drawHeader(Ctx& ctx, const store::Settings& settings) {
  const bool large = largeLayout(ctx);
  fillRect(ctx.cr, Rect{0, 0, ctx.width, headerH_}, kColorBackground, 0.96);
  drawLine(ctx.cr, 0, headerH_ - 0.5, ctx.width, headerH_ - 0.5, 1, kColorBorder, 1.0);
  if (backButton(ctx)) leave(ctx);

  const double rowH = rowOneHeight(large);
  const double pauseW = large ? 110 : 96;
  const Rect pause{ctx.width - pauseW - (large ? 16 : 12), (rowH - kButtonH) * 0.5, pauseW, kButtonH};
  // Paused, the control reads as the way back into the game; once solved
  // there is nothing left to pause.
  if (!solved() && plainButton(ctx, pause, i18n::tr(paused_ ? "common.continue" : "playing.pause"), paused_)) {
    paused_ = !paused_;
  }

  const core::Level* level = core::levelById(puzzle_.levelId);
  char info[160];
  std::snprintf(info, sizeof info, "%s  \xC2\xB7  %d\xC3\x97%d  \xC2\xB7  %d/%d  \xC2\xB7  %s",
                level ? levelTitle(*level).c_str() : "", puzzle_.rows, puzzle_.cols, puzzle_.placedCount(),
                puzzle_.rows * puzzle_.cols, formatTime(puzzle_.elapsedMs).c_str());
  TextStyle style;
  style.size = large ? 18 : 15;
  style.bold = true;
  style.color = kColorText;
  style.maxWidth = ctx.width - 2 * (pause.w + 40);
  drawTextCentered(ctx.cr, ctx.width * 0.5, rowH * 0.5, info, style);

  if (settings.showSecondRow) drawControls(ctx, settings, rowH, rowTwoHeight(large));
}

// Paused or solved, the controls are drawn inert: the board they act on is
// hidden or finished.
void PlayingScreen::drawControls(Ctx& ctx, const store::Settings& settings, double y, double h) {
  const bool large = largeLayout(ctx);
  const bool inert = paused_ || solved();
  const bool zoom = zoomEnabled(settings);
  const double zoomW = zoom ? 3 * kButtonW + kReadoutW + 3 * kGap + 24 : 0;
  const double actionsW = 3 * kButtonW + 2 * kGap;
  double x = (ctx.width - zoomW - actionsW) * 0.5;
  const double top = y + (h - kButtonH) * 0.5;
  const auto next = [&](double w) {
    const Rect r{x, top, w, kButtonH};
    x += w + kGap;
    return r;
  };
  if (zoom) {
    if (letterButton(ctx, next(kButtonW), "\xE2\x88\x92", inert || view_.zoom <= kMinZoom)) stepZoom(-kZoomStep, ctx);
    const Rect readout = next(kReadoutW);
    char percent[16];
    std::snprintf(percent, sizeof percent, "%d%%", static_cast<int>(std::lround(view_.zoom * 100)));
    TextStyle style;
    style.size = 15;
    style.bold = true;
    style.color = kColorText;
    drawTextCentered(ctx.cr, readout.x + readout.w * 0.5, readout.y + readout.h * 0.5, percent, style);
    if (letterButton(ctx, next(kButtonW), "+", inert || view_.zoom >= kMaxZoom)) stepZoom(kZoomStep, ctx);
    if (letterButton(ctx, next(kButtonW), "1:1", inert || !view_.zoomed())) view_.reset();
    x += 24;
  }
  const bool canUndo = !inert && !puzzle_.undoStack.empty();
  if (letterButton(ctx, next(kButtonW), large ? "\xE2\x86\xB6" : i18n::tr("playing.letterUndo"), !canUndo) &&
      puzzle_.undo()) {
    dirty_ = true;
  }
  if (letterButton(ctx, next(kButtonW), large ? "\xE2\x86\xBB" : i18n::tr("playing.letterRestart"), inert)) {
    dialog_ = Dialog::Restart;
  }
  const Rect shuffle = next(kButtonW);
  if (letterButton(ctx, shuffle, large ? "" : i18n::tr("playing.letterShuffle"), inert)) dialog_ = Dialog::Shuffle;
  if (large) {
    drawShuffleIcon(ctx.cr, shuffle.x + shuffle.w * 0.5, shuffle.y + shuffle.h * 0.5, 22, kColorAccent,
                    inert ? 0.35 : 1.0);
  }
}

void PlayingScreen::drawHints(Ctx& ctx, const store::Settings& settings) {
  hint_ = Rect{};
  if (settings.rotationMode == store::RotationMode::Off || solved()) return;
  const double age = ctx.time - startedAt_;
  if (age > kHintSeconds) return;
  const double alpha = std::min(1.0, kHintSeconds - age);
  // It rests, then fades out over its last second.
  if (alpha < 1.0) {
    ctx.requestFrame();
  } else {
    ctx.requestFrameAt(startedAt_ + kHintSeconds - 1.0);
  }
  const std::string text = i18n::tr("playing.rotateHintMouse");
  // The hint takes the first place where it hides neither a strip nor a
  // piece: the foot of the table, its head, or the middle of the board.
  const bool strips = puzzle_.layoutMode == store::BoardLayout::ScrollTray;
  const Rect table = strips ? tray_.table(ctx.width, ctx.height, headerH_)
                            : Rect{0, headerH_, ctx.width, ctx.height - headerH_};
  const Rect box = pillRect(ctx, ctx.width * 0.5, 0, text, 14);
  for (const double cy : {table.y + table.h - 36, table.y + 36, table.y + table.h * 0.5}) {
    hint_ = Rect{box.x, cy - box.h * 0.5, box.w, box.h};
    if (!hidesSomething(hint_)) {
      pill(ctx, hint_, text, 14, alpha);
      return;
    }
  }
  hint_ = Rect{};
}

bool PlayingScreen::hidesSomething(const Rect& r) const {
  const bool strips = puzzle_.layoutMode == store::BoardLayout::ScrollTray;
  if (strips && (overlap(r, tray_.strip(0)) || overlap(r, tray_.strip(1)))) return true;
  const double w = (puzzle_.cellW + 2 * puzzle_.pad) * view_.zoom, h = (puzzle_.cellH + 2 * puzzle_.pad) * view_.zoom;
  for (const core::Piece& p : puzzle_.pieces) {
    if (!p.inTray && overlap(r, Rect{view_.toScreenX(p.restX), view_.toScreenY(p.restY), w, h})) return true;
  }
  return false;
}

void PlayingScreen::drawSolvedBanner(Ctx& ctx) {
  const double alpha = std::min(1.0, (ctx.time - solvedAt_) * 3);
  if (alpha < 1.0) ctx.requestFrame();  // fading in
  const std::string text = i18n::tr("solved.title") + "  " + formatTime(puzzle_.elapsedMs);
  pill(ctx, pillRect(ctx, ctx.width * 0.5, headerH_ + (ctx.height - headerH_) * 0.5, text, 26), text, 26, alpha);
}

// Paused, the picture is hidden until the player comes back.
void PlayingScreen::drawPause(Ctx& ctx) {
  fillRect(ctx.cr, Rect{0, headerH_, ctx.width, ctx.height - headerH_}, kColorBackground, 1.0);
  TextStyle title;
  title.size = 28;
  title.bold = true;
  title.color = kColorAccent;
  const double cy = headerH_ + (ctx.height - headerH_) * 0.5;
  drawTextCentered(ctx.cr, ctx.width * 0.5, cy - 50, i18n::tr("playing.pause"), title);
  const double w = std::min(ctx.width - 64, 240.0);
  if (menuButton(ctx, Rect{(ctx.width - w) * 0.5, cy, w, 52}, i18n::tr("common.continue"), true)) paused_ = false;
}

}  // namespace ui
