#include "app/window_geometry.h"

#include <algorithm>

namespace app {

WindowPlacement placeWindow(const store::Settings& settings, bool sizeFromCommandLine, const SDL_Rect* area) {
  WindowPlacement p;
  p.w = settings.windowW;
  p.h = settings.windowH;
  // A size asked for on the command line is taken exactly, centred.
  if (sizeFromCommandLine) return p;

  const bool areaValid = area && area->w > 0 && area->h > 0;
  if (areaValid) {
    p.w = std::min(p.w, area->w - 20);
    p.h = std::min(p.h, area->h - 80);
  }
  // Only X is compared with -1: a stored Y of -1 alone is a real position.
  const bool centred = settings.windowX < -9999 || settings.windowX == -1 || settings.windowY < -9999;
  if (centred) return p;
  p.x = settings.windowX;
  p.y = settings.windowY;
  if (areaValid) {
    p.x = p.x < area->x ? area->x : std::min(p.x, area->x + area->w - p.w);
    // 30 below the top keeps the title bar reachable.
    p.y = p.y < area->y + 30 ? area->y + 30 : std::min(p.y, area->y + area->h - p.h);
  }
  return p;
}

bool displayArea(SDL_Rect* area) {
  if (SDL_GetDisplayUsableBounds(0, area) == 0 && area->w > 0) return true;
  return SDL_GetDisplayBounds(0, area) == 0;
}

}  // namespace app
