// Value widgets: a slider and an on/off row.
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

// The new value in [0, 1]; the value unchanged unless the slider is dragged.
double slider(Ctx& ctx, const Rect& r, double value);
// The new state; a click anywhere in the row toggles it.
bool toggleRow(Ctx& ctx, const Rect& r, const std::string& label, bool on);

}  // namespace ui
