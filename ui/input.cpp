#include "ui/input.h"

#include <algorithm>

namespace ui {

bool Input::hasKey(int32_t key) const { return std::find(keys.begin(), keys.end(), key) != keys.end(); }

void Input::reset() {
  mouseX = mouseY = 0;
  mouseDown = mousePressed = mouseReleased = doubleClick = rightPressed = middleDown = false;
  wheel = dx = dy = 0;
  keys.clear();
  ctrl = shift = spaceDown = false;
  windowActive = true;
}

bool Ctx::takeClick(const Rect& r) {
  if (clickTaken || !in.mouseReleased || !hover(r)) return false;
  clickTaken = true;
  return true;
}

}  // namespace ui
