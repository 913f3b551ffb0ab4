// Playing from the keyboard. Tab picks a loose piece, the arrows walk a
// cursor over the board's cells and Return lays the piece on the cursor's
// cell, where the ordinary drop decides: home and upright, it snaps; else it
// lies loose on that cell. So the keys are as honest as the mouse: nothing
// tells where a piece belongs until it is tried there.
//
//   key              nothing picked           a piece picked
//   Tab / Shift+Tab  picks the next / previous loose piece (the strips first)
//   arrows           pan (zoomed in)          move the cursor, kept on the board
//   Return           -                        lays it on the cursor's cell
//   R                -                        turns it (by the rotation setting)
//   Escape           leaves the puzzle        lets it go, where it was
#include <SDL.h>

#include <algorithm>
#include <cmath>

#include "audio/audio.h"
#include "ui/draw.h"
#include "ui/screens/playing_screen.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kMarkGap = 3;  // between a piece or cell and its mark

void drawMark(cairo_t* cr, const Rect& r, uint32_t rgb) {
  const Rect m{r.x - kMarkGap, r.y - kMarkGap, r.w + 2 * kMarkGap, r.h + 2 * kMarkGap};
  strokeRoundedRect(cr, m, 6, 6, kColorBackground, 0.8);
  strokeRoundedRect(cr, m, 6, 3, rgb, 1.0);
}

}  // namespace

std::vector<int> PlayingScreen::pickOrder() {
  pickOrder_.clear();
  const int cols = puzzle_.cols;
  if (puzzle_.layoutMode == store::BoardLayout::ScrollTray) {
    for (int i = 0; i < 2; ++i) {
      for (const core::Piece* p : tray_.items(i)) pickOrder_.push_back(p->row * cols + p->col);
    }
  }
  const size_t table = pickOrder_.size();
  for (size_t i = 0; i < puzzle_.pieces.size(); ++i) {
    const core::Piece& p = puzzle_.pieces[i];
    if (!p.placed && !p.inTray) pickOrder_.push_back(static_cast<int>(i));
  }
  // Rows of the table a cell high, each from left to right.
  const double rowH = std::max(puzzle_.cellH, 1.0);
  std::stable_sort(pickOrder_.begin() + static_cast<long>(table), pickOrder_.end(), [&](int a, int b) {
    const core::Piece& pa = puzzle_.pieces[a];
    const core::Piece& pb = puzzle_.pieces[b];
    const long ra = static_cast<long>(std::floor(pa.y / rowH)), rb = static_cast<long>(std::floor(pb.y / rowH));
    return ra != rb ? ra < rb : pa.x < pb.x;
  });
  return pickOrder_;
}

// After a put-down nothing is picked; the next Tab takes the piece now in
// the place the last one left in the order, Shift+Tab the one before it.
void PlayingScreen::pickNext(int step) {
  const std::vector<int> order = pickOrder();
  const int n = static_cast<int>(order.size());
  if (n == 0) {
    picked_ = -1;
    return;
  }
  const auto it = std::find(order.begin(), order.end(), picked_);
  const int from = it != order.end() ? static_cast<int>(it - order.begin()) : pickSlot_ - (step > 0 ? 1 : 0);
  picked_ = order[((from + step) % n + n) % n];
}

void PlayingScreen::moveCursor(int dRow, int dCol) {
  cursorRow_ = std::clamp(cursorRow_ + dRow, 0, std::max(puzzle_.rows - 1, 0));
  cursorCol_ = std::clamp(cursorCol_ + dCol, 0, std::max(puzzle_.cols - 1, 0));
}

void PlayingScreen::putDown(const store::Settings& settings) {
  const std::vector<int> order = pickOrder();
  const auto it = std::find(order.begin(), order.end(), picked_);
  pickSlot_ = it != order.end() ? static_cast<int>(it - order.begin()) : 0;
  core::Piece& piece = puzzle_.pieces[picked_];
  const bool fromTray = piece.inTray;
  piece.inTray = false;
  puzzle_.bringToFront(piece);
  piece.x = puzzle_.boardX + cursorCol_ * puzzle_.cellW - puzzle_.pad;
  piece.y = puzzle_.boardY + cursorRow_ * puzzle_.cellH - puzzle_.pad;
  // Out of a strip it appears on the cell; from the table it glides there.
  if (fromTray) {
    piece.restX = piece.x;
    piece.restY = piece.y;
  }
  const bool snapped = puzzle_.drop(piece, settings.boardLayout);
  audio::play(snapped ? audio::Sfx::Snap : audio::Sfx::Drop);
  picked_ = -1;
  dirty_ = true;
}

bool PlayingScreen::handlePieceKey(Ctx& ctx, int32_t key, const store::Settings& settings) {
  if (picked_ >= 0 && puzzle_.pieces[picked_].placed) picked_ = -1;
  if (key == SDLK_TAB) {
    pickNext(ctx.in.shift ? -1 : 1);
    showPicked(ctx, false);
    return true;
  }
  if (picked_ < 0) return false;
  switch (key) {
    case SDLK_LEFT: moveCursor(0, -1); break;
    case SDLK_RIGHT: moveCursor(0, 1); break;
    case SDLK_UP: moveCursor(-1, 0); break;
    case SDLK_DOWN: moveCursor(1, 0); break;
    case SDLK_RETURN:
    case SDLK_KP_ENTER: putDown(settings); return true;
    case SDLK_r:
      if (ctx.in.ctrl) return false;
      turn(puzzle_.pieces[picked_], settings);
      return true;
    case SDLK_ESCAPE: picked_ = -1; return true;
    default: return false;
  }
  showPicked(ctx, true);
  return true;
}

// The picked piece's thumbnail is scrolled into its strip; zoomed in, the
// view is moved to the piece on the table when it is picked, and to the
// cursor's cell when that moves.
void PlayingScreen::showPicked(const Ctx& ctx, bool cursor) {
  if (picked_ < 0) return;
  const core::Piece& piece = puzzle_.pieces[picked_];
  int strip = 0;
  size_t k = 0;
  if (piece.inTray && tray_.find(&piece, &strip, &k)) tray_.reveal(strip, k);
  if (!view_.zoomed() || (piece.inTray && !cursor)) return;
  const double bx = cursor ? puzzle_.boardX + (cursorCol_ + 0.5) * puzzle_.cellW
                           : piece.x + puzzle_.pad + puzzle_.cellW * 0.5;
  const double by = cursor ? puzzle_.boardY + (cursorRow_ + 0.5) * puzzle_.cellH
                           : piece.y + puzzle_.pad + puzzle_.cellH * 0.5;
  const double margin = puzzle_.cellW * view_.zoom;
  const double sx = view_.toScreenX(bx), sy = view_.toScreenY(by);
  if (sx < margin || sx > ctx.width - margin) view_.offsetX += ctx.width * 0.5 - sx;
  if (sy < headerH_ + margin || sy > ctx.height - margin) view_.offsetY += (headerH_ + ctx.height) * 0.5 - sy;
}

// The picked piece ringed in the accent colour where it lies, and the
// cursor's cell ringed in white.
void PlayingScreen::drawKeyboardMarks(Ctx& ctx) {
  if (picked_ < 0) return;
  const core::Piece& piece = puzzle_.pieces[picked_];
  int strip = 0;
  size_t k = 0;
  if (piece.inTray && tray_.find(&piece, &strip, &k)) {
    drawMark(ctx.cr, tray_.slot(strip, k), kColorAccent);
  } else if (!piece.inTray) {
    const bool across = piece.rotation % 180 != 0;
    const double w = (across ? puzzle_.cellH : puzzle_.cellW) * view_.zoom;
    const double h = (across ? puzzle_.cellW : puzzle_.cellH) * view_.zoom;
    const double cx = view_.toScreenX(piece.restX + puzzle_.pad + puzzle_.cellW * 0.5);
    const double cy = view_.toScreenY(piece.restY + puzzle_.pad + puzzle_.cellH * 0.5);
    drawMark(ctx.cr, Rect{cx - w * 0.5, cy - h * 0.5, w, h}, kColorAccent);
  }
  const Rect cell{view_.toScreenX(puzzle_.boardX + cursorCol_ * puzzle_.cellW),
                  view_.toScreenY(puzzle_.boardY + cursorRow_ * puzzle_.cellH), puzzle_.cellW * view_.zoom,
                  puzzle_.cellH * view_.zoom};
  drawMark(ctx.cr, cell, 0xffffff);
}

}  // namespace ui
