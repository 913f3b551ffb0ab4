// The keyboard focus, for every screen at once. Each frame the controls a
// player can press register their rects in the order they are drawn; the
// focus is a place in that order, kept here from frame to frame, and a ring
// is drawn round it over everything else at the end of the frame.
//
//   input              ring hidden        ring shown
//   Tab / Shift+Tab    shows it           the next / previous control, round the end
//   arrow keys         shows it           the nearest control that way; Left and
//                                         Right move a focused slider instead
//   Return, Space      nothing            presses the focused control
//   the pointer moves  nothing            hides it (the place is kept)
//
// Modal layers: controls beneath a modal InputShield register nothing, so
// while a dialog is open the order holds its controls only and the focus
// cannot leave it. The place beneath is kept apart and comes back when the
// dialog goes. A new screen starts with nothing focused: the first Tab
// takes the first control (the back button, on a page that has one).
#pragma once

#include "ui/input.h"

namespace ui {

// Registers a pressable control drawn at `r`; true when the focused one was
// pressed by Return or Space this frame (the key is taken out of the input,
// so nothing drawn later sees it again).
bool focusPressed(Ctx& ctx, const Rect& r);
// Registers a slider drawn at `r`; -1 or +1 for each Left or Right pressed
// while it holds the focus, summed; 0 otherwise.
int focusSlide(Ctx& ctx, const Rect& r);
// Registers a control drawn nowhere this frame (scrolled out of a list's
// view), so the order does not skip it; the list scrolls it in when it
// takes the focus (focusMovedTo).
void focusPlaceholder(const Rect& r);

// This frame the screen takes Tab, the arrows, Return and Space itself (the
// playing screen, which moves pieces with them); nothing is focused by them.
void focusYieldKeys();
// Controls registered while one lives belong to the list scrolled by
// `offset`, which brings them into view when they take the focus.
class FocusList {
 public:
  explicit FocusList(const double* offset);
  ~FocusList();
  FocusList(const FocusList&) = delete;
  FocusList& operator=(const FocusList&) = delete;

 private:
  const double* outer_;
};
// True, with the rect it had, in the frame after the focus moved to a
// control of the list scrolled by `offset`.
bool focusMovedTo(const double* offset, Rect* r);
// The focused control's rect while the ring shows; false otherwise.
bool focusRing(Rect* r);

// The frame's bracket, run by the screen stack around the top screen.
void focusBeginFrame(bool newScreen);
void focusEndFrame(Ctx& ctx);
// Modal shields open and close (ui::InputShield).
void focusShield(bool on);

}  // namespace ui
