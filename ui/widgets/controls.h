// Value widgets: a slider and an on/off row.
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

// While the button is held over it (or a little beside it), the value under
// the pointer in [0, 1]; otherwise `value` exactly as given, even outside
// [0, 1] (it is drawn clamped). Focused, Left and Right step it.
double slider(Ctx& ctx, const Rect& r, double value);
// The new state; a click anywhere in the row toggles it.
bool toggleRow(Ctx& ctx, const Rect& r, const std::string& label, bool on);

}  // namespace ui
