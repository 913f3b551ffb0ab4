// Turns SDL events into the frame's ui::Input and the window geometry stored
// in the settings. F11 and Ctrl+Q are handled here and never reach screens.
#pragma once

#include <SDL.h>

#include "store/settings.h"
#include "ui/input.h"

namespace app {

struct LoopState {
  bool running = true;
  double lastRelease = -10.0;   // time of the previous left release
  bool geometryChanged = false;  // saved at most every 2 s by the loop
  bool saveNow = false;          // F11 toggled fullscreen: save at once
};

// `now` is the frame clock; `windowFlags` the window's current SDL flags.
void handleEvent(const SDL_Event& e, double now, Uint32 windowFlags, ui::Input& in, store::Settings& settings,
                 LoopState& loop);

}  // namespace app
