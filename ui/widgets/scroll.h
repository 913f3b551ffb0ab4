// Kinetic scrolling of a vertical list: wheel, drag with a fling, and the
// scrollbar. The context holds the one drag in progress (ui::Ctx::drag).
#pragma once

#include "ui/input.h"

namespace ui {

// Updates *offset for this frame and clamps it to [0, content - viewport].
void applyScroll(Ctx& ctx, const Rect& viewport, double contentHeight, double* offset);
void scrollbar(Ctx& ctx, const Rect& viewport, double contentHeight, double offset);
// In the frame after the keyboard focus moved to a control of the list
// scrolled by *offset (registered under a FocusList), scrolls just enough to
// show it whole; applyScroll clamps afterwards.
void revealFocus(const Rect& viewport, double* offset);

}  // namespace ui
