#include "app/pacing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace app {

double nextFrameTime(const Pace& pace) {
  const bool now = pace.motion || (pace.animating && !pace.hidden);
  const double wanted = now ? pace.lastFrame : pace.frameAt;
  return std::max(wanted, pace.lastFrame + pace.interval);
}

double displayInterval(SDL_Window* window) {
  SDL_DisplayMode mode;
  const int display = SDL_GetWindowDisplayIndex(window);
  if (display >= 0 && SDL_GetCurrentDisplayMode(display, &mode) == 0 && mode.refresh_rate > 0) {
    return 1.0 / mode.refresh_rate;
  }
  return 1.0 / 60;
}

Wake waitForEvent(double seconds) {
  const double ms = std::ceil(std::max(seconds, 0.0) * 1000);
  const int timeout = ms < std::numeric_limits<int>::max() ? static_cast<int>(ms) : -1;
  if (!SDL_WaitEventTimeout(nullptr, timeout)) return Wake::Timeout;
  const auto pending = [](Uint32 first, Uint32 last) {
    return SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, first, last) > 0;
  };
  if (pending(SDL_FIRSTEVENT, SDL_MOUSEMOTION - 1) || pending(SDL_MOUSEMOTION + 1, SDL_LASTEVENT)) return Wake::Event;
  SDL_FlushEvent(SDL_MOUSEMOTION);
  return Wake::Motion;
}

}  // namespace app
