// When the loop draws. A frame is drawn when an event arrives, when a screen
// asked for one (ui::Ctx::requestFrame, requestFrameAt) or when pointer motion
// waits; otherwise the loop sleeps in SDL's event wait. Frames never come
// faster than the display refreshes: where presenting does not wait for the
// display (no vsync, or a vsync the driver ignores), the loop waits out the
// rest of the interval itself. Only pointer motion is held back by that wait
// (the pointer is read once per frame anyway); a key, a button, a wheel turn
// or a window event ends it, so input is never kept waiting.
//
//   last frame asked for           next frame
//   nothing                        at the next event
//   requestFrame()                 one display interval after the last one
//   requestFrameAt(t)              at t, but not within the interval
//   requestFrame(), window hidden  at the next event or timed request
//   (pointer moved)                one display interval after the last one
#pragma once

#include <SDL.h>

namespace app {

struct Pace {
  double lastFrame = 0;     // when the last frame drawn began
  double interval = 1.0 / 60;  // the display's refresh interval
  bool animating = false;   // the last frame asked for the next at once
  double frameAt = 0;       // its earliest timed request (infinity: none)
  bool hidden = false;      // minimised, unmapped or of no size
  bool motion = false;      // the pointer moved since the last frame
};

// The time (on the loop's clock) from which the next frame is due;
// infinity while nothing wants one.
double nextFrameTime(const Pace& pace);

// The refresh interval of the display the window is on (60 Hz when the
// display does not say).
double displayInterval(SDL_Window* window);

enum class Wake { Timeout, Motion, Event };

// Sleeps until `seconds` have passed or an event arrives. Event: something
// other than pointer motion waits in the queue, untouched. Motion: only
// pointer motion came; it is taken off the queue (motion is polled).
Wake waitForEvent(double seconds);

}  // namespace app
