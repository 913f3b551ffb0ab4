#include "ui/input.h"

#include <algorithm>
#include <utility>

namespace ui {

bool Input::hasKey(int32_t key) const { return std::find(keys.begin(), keys.end(), key) != keys.end(); }

void Input::reset() {
  mouseX = mouseY = 0;
  mouseDown = mousePressed = mouseReleased = doubleClick = rightPressed = middleDown = false;
  wheel = dx = dy = 0;
  keys.clear();
  dropped.clear();
  ctrl = shift = spaceDown = false;
  windowActive = true;
}

bool Ctx::takeClick(const Rect& r) {
  if (clickTaken || !in.mouseReleased || !hover(r)) return false;
  clickTaken = true;
  return true;
}

// The real input is swapped out rather than copied, so the key list is not
// reallocated every frame a dialog is open.
InputShield::InputShield(Ctx& ctx, bool on) : ctx_(ctx), on_(on) {
  if (!on_) return;
  std::swap(held_, ctx_.in);
  ctx_.in.reset();
  ctx_.in.mouseX = ctx_.in.mouseY = -1e9;
  ctx_.in.windowActive = held_.windowActive;
}

InputShield::~InputShield() {
  if (on_) std::swap(held_, ctx_.in);
}

}  // namespace ui
