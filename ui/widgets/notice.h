// Messages for the player that wait their turn: each shows in a box with an
// OK button over whatever screen is up, the oldest first. The frame function
// runs the screen beneath a shield while one shows (ui/frame.cpp).
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

void postNotice(const std::string& title, const std::string& message);
bool noticePending();
// Shows the oldest notice, if any, and lets it go once acknowledged (OK,
// Return, Escape or a click outside its box).
void noticeLayer(Ctx& ctx);

}  // namespace ui
