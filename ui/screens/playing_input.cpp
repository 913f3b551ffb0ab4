// The playing screen's input: keys first (keyboard play before the rest,
// playing_keys.cpp), then the held piece, panning, the tray strips and the
// table, in that order of precedence.
#include <SDL.h>

#include <algorithm>
#include <cmath>

#include "audio/audio.h"
#include "ui/screens/playing_screen.h"

namespace ui {

namespace {

constexpr double kArrowPan = 60;  // units per arrow key press

bool isOneOf(int32_t key, std::initializer_list<int32_t> keys) {
  for (int32_t k : keys) {
    if (k == key) return true;
  }
  return false;
}

}  // namespace

bool PlayingScreen::zoomEnabled(const store::Settings& settings) const {
  return settings.boardZoomMode != store::BoardZoomMode::Off;
}

void PlayingScreen::handleInput(Ctx& ctx, store::Settings& settings) {
  if (!zoomEnabled(settings)) view_.reset();
  handleKeys(ctx, settings);
  if (dialog_ == Dialog::None && !paused_) handlePointer(ctx, settings);
}

// Keys and zoom re-centre the board, as the header buttons do.
void PlayingScreen::stepZoom(double delta, const Ctx& ctx) {
  const double next = delta == 0 ? kMinZoom : view_.zoom + delta;
  if (std::abs(next - view_.zoom) >= 0.000001) view_.zoomCentred(next, puzzle_, ctx.width, ctx.height);
}

void PlayingScreen::handleKeys(Ctx& ctx, const store::Settings& settings) {
  const bool zoom = zoomEnabled(settings);
  // Escape lets a picked piece go; only a second one leaves the puzzle.
  const bool escapeLetsGo = picked_ >= 0 && ctx.in.hasKey(SDLK_ESCAPE);
  for (const int32_t key : ctx.in.keys) {
    if (handlePieceKey(ctx, key, settings)) continue;
    if (ctx.in.ctrl && key == SDLK_z) {
      if (puzzle_.undo()) {
        audio::play(audio::Sfx::Click);
        dirty_ = true;
      }
    } else if (ctx.in.ctrl && key == SDLK_n) {
      dialog_ = Dialog::Restart;
    } else if (ctx.in.ctrl && key == SDLK_r) {
      dialog_ = Dialog::Shuffle;
    } else if (zoom && isOneOf(key, {SDLK_PLUS, SDLK_EQUALS, SDLK_KP_PLUS})) {
      stepZoom(kZoomStep, ctx);
    } else if (zoom && isOneOf(key, {SDLK_MINUS, SDLK_KP_MINUS})) {
      stepZoom(-kZoomStep, ctx);
    } else if (zoom && isOneOf(key, {SDLK_0, SDLK_KP_0})) {
      stepZoom(0, ctx);
    } else if (isOneOf(key, {SDLK_p, SDLK_PAUSE})) {
      paused_ = true;
    } else if (view_.zoomed() && isOneOf(key, {SDLK_LEFT, SDLK_RIGHT, SDLK_UP, SDLK_DOWN})) {
      view_.offsetX += key == SDLK_LEFT ? kArrowPan : key == SDLK_RIGHT ? -kArrowPan : 0;
      view_.offsetY += key == SDLK_UP ? kArrowPan : key == SDLK_DOWN ? -kArrowPan : 0;
    }
  }
  if (escapeLetsGo) {
    std::vector<int32_t>& keys = ctx.in.keys;
    keys.erase(std::remove(keys.begin(), keys.end(), SDLK_ESCAPE), keys.end());
  }
}

// While paused: P, Pause, Return or Space resume (Escape still leaves,
// through the back button).
void PlayingScreen::handlePausedKeys(const Ctx& ctx) {
  for (const int32_t key : ctx.in.keys) {
    if (isOneOf(key, {SDLK_p, SDLK_PAUSE, SDLK_RETURN, SDLK_KP_ENTER, SDLK_SPACE})) paused_ = false;
  }
}

void PlayingScreen::pickUp(core::Piece& piece, double bx, double by, const store::Settings& settings) {
  puzzle_.bringToFront(piece);
  held_ = piece.row * puzzle_.cols + piece.col;
  grabX_ = bx - piece.x;
  grabY_ = by - piece.y;
  piece.restX = piece.x;
  piece.restY = piece.y;
  audio::play(audio::Sfx::Pickup);
  if (settings.boardZoomMode == store::BoardZoomMode::AutoOnPickup && view_.zoomed()) {
    // Zoomed in, the piece's home may lie off screen: show the whole board
    // while it is carried, and come back to the same view afterwards.
    beforePickup_ = view_;
    pickupZoomed_ = true;
    view_.reset();
  }
}

// A piece let go with the pointer over a tray strip goes back to the tray,
// even when the piece itself still overlaps the board.
void PlayingScreen::dropHeld(const store::Settings& settings) {
  core::Piece& piece = puzzle_.pieces[held_];
  const int strip = tray_.stripAt(pointerX_, pointerY_);
  const bool snapped = puzzle_.drop(piece, settings.boardLayout);
  if (!snapped && puzzle_.layoutMode == store::BoardLayout::ScrollTray && strip >= 0) {
    piece.inTray = true;
    tray_.putBack(held_, strip);
  }
  held_ = -1;
  audio::play(snapped ? audio::Sfx::Snap : audio::Sfx::Drop);
  dirty_ = true;
  if (pickupZoomed_) {
    view_ = beforePickup_;
    pickupZoomed_ = false;
  }
}

void PlayingScreen::turn(core::Piece& piece, const store::Settings& settings) {
  const int before = piece.rotation;
  puzzle_.rotate(piece, settings.rotationMode);
  if (piece.rotation == before) return;
  audio::play(audio::Sfx::Click);
  dirty_ = true;
}

void PlayingScreen::handlePointer(Ctx& ctx, const store::Settings& settings) {
  const Input& in = ctx.in;
  const double bx = view_.toBoardX(in.mouseX);
  const double by = view_.toBoardY(in.mouseY);
  pointerX_ = in.mouseX;
  pointerY_ = in.mouseY;
  if (held_ >= 0) {
    core::Piece& piece = puzzle_.pieces[held_];
    if (in.rightPressed) turn(piece, settings);
    piece.x = piece.restX = bx - grabX_;
    piece.y = piece.restY = by - grabY_;
    if (in.mouseReleased || !in.mouseDown) {
      dropHeld(settings);
      ctx.clickTaken = true;  // the release ends the drag; it is nobody's click
    }
    return;
  }
  if (panning_ || (in.middleDown && view_.zoomed())) {
    view_.offsetX += in.dx;
    view_.offsetY += in.dy;
    panning_ = panning_ && in.mouseDown;
    return;
  }
  if (in.mouseY < headerH_) return;  // the header's buttons take it
  if (puzzle_.layoutMode == store::BoardLayout::ScrollTray && handleTray(ctx, settings)) return;
  if (in.wheel != 0 && zoomEnabled(settings)) {
    view_.zoomAt(view_.zoom * std::pow(kWheelFactor, in.wheel), in.mouseX, in.mouseY);
  }
  core::Piece* hit = (in.mousePressed || in.rightPressed) ? puzzle_.hitTest(bx, by) : nullptr;
  if (in.rightPressed && hit && !hit->placed) turn(*hit, settings);
  if (!in.mousePressed) return;
  if (hit && !hit->placed && !in.spaceDown) {
    pickUp(*hit, bx, by, settings);
  } else if (view_.zoomed()) {
    panning_ = true;  // space + drag, or a drag on the empty table
  }
}

// A thumbnail pressed in a strip comes out of the tray centred under the
// pointer; a piece carried back over a strip returns to it on release.
bool PlayingScreen::handleTray(Ctx& ctx, const store::Settings& settings) {
  const Input& in = ctx.in;
  core::Piece* piece = tray_.pieceAt(in.mouseX, in.mouseY);
  if (piece && in.rightPressed) {
    turn(*piece, settings);
    return true;
  }
  if (piece && in.mousePressed) {
    const double bx = view_.toBoardX(in.mouseX), by = view_.toBoardY(in.mouseY);
    piece->inTray = false;
    piece->x = bx - (puzzle_.cellW + 2 * puzzle_.pad) * 0.5;
    piece->y = by - (puzzle_.cellH + 2 * puzzle_.pad) * 0.5;
    pickUp(*piece, bx, by, settings);
    return true;
  }
  return tray_.handleScroll(ctx);
}

}  // namespace ui
