// The modal confirmation dialog, drawn over the screen.
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

// The ground of every modal layer: the window dimmed, and the box drawn on it.
void modalBox(Ctx& ctx, const Rect& box);

// 1 confirmed, -1 cancelled (cancel button, a click outside the box, or
// Escape), 0 undecided. It always consumes the frame's click, so nothing
// under it reacts to the same click. With an empty cancel label the box has
// only the confirm button, in the middle (a message to acknowledge).
int confirmDialog(Ctx& ctx, const std::string& title, const std::string& message, const std::string& confirmLabel,
                  const std::string& cancelLabel);

}  // namespace ui
