// The modal confirmation dialog, drawn over the screen.
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

// 1 confirmed, -1 cancelled (cancel button, a click outside the box, or
// Escape), 0 undecided. It always consumes the frame's click, so nothing
// under it reacts to the same click.
int confirmDialog(Ctx& ctx, const std::string& title, const std::string& message, const std::string& confirmLabel,
                  const std::string& cancelLabel);

}  // namespace ui
