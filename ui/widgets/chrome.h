// The pieces every screen frames itself with: back button, header, the wavy
// title and the footer.
#pragma once

#include <string>

#include "ui/input.h"

namespace ui {

Rect backButtonRect(const Ctx& ctx);
// True when clicked, or when Escape was pressed this frame: both lead the
// caller to Game::back() (after whatever it must do on leaving).
bool backButton(Ctx& ctx);
// Draws the back button and the centred title; returns the header height.
// `backClicked` may be null.
double screenHeader(Ctx& ctx, const std::string& title, bool* backClicked);
// Returns the total advance; an empty text draws nothing and returns 0.
double wavyTitle(Ctx& ctx, double cx, double cy, const std::string& text, double size);
// The game's tagline under the title, centred on the window at height cy.
void tagline(Ctx& ctx, double cy);
void footer(Ctx& ctx, double bottom);

}  // namespace ui
