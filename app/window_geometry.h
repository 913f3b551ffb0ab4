// Where and how large the window opens, from the stored geometry and the
// usable display area.
#pragma once

#include <SDL.h>

#include "store/settings.h"

namespace app {

struct WindowPlacement {
  int x = SDL_WINDOWPOS_CENTERED, y = SDL_WINDOWPOS_CENTERED;
  int w = 0, h = 0;
};

// `area` is null when no display area is known.
WindowPlacement placeWindow(const store::Settings& settings, bool sizeFromCommandLine, const SDL_Rect* area);
// The usable bounds of display 0, else its full bounds; false when neither is known.
bool displayArea(SDL_Rect* area);

}  // namespace app
