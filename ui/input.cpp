#include "ui/input.h"

#include <algorithm>
#include <utility>

#include "ui/focus.h"

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
InputShield::InputShield(Ctx& ctx, bool on, Shield kind) : ctx_(ctx), on_(on), kind_(kind) {
  if (!on_) return;
  if (kind_ == Shield::Modal) focusShield(true);
  std::swap(held_, ctx_.in);
  ctx_.in.reset();
  ctx_.in.mouseX = ctx_.in.mouseY = -1e9;
  ctx_.in.windowActive = held_.windowActive;
  // Beside a list's view the keys still count: a control focused there
  // answers them, and the list scrolls it in.
  if (kind_ == Shield::PointerOnly) {
    ctx_.in.keys.swap(held_.keys);
    ctx_.in.ctrl = held_.ctrl;
    ctx_.in.shift = held_.shift;
  }
}

InputShield::~InputShield() {
  if (!on_) return;
  if (kind_ == Shield::PointerOnly) ctx_.in.keys.swap(held_.keys);
  std::swap(held_, ctx_.in);
  if (kind_ == Shield::Modal) focusShield(false);
}

}  // namespace ui
