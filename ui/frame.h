// One frame of the game as the window shows it. The game's loop and the
// tests that drive screens in-process both draw through this function, so
// what a test sees is what the player sees.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "ui/frame_layer.h"
#include "ui/input.h"

namespace ui {

// The colour every frame is cleared to: the player's, or the palette's.
uint32_t backgroundRgb();

// Draws the top screen into the renderer's output of outW × outH pixels, at
// `scale` pixels per logical unit: clears to the background colour (the
// player's, or the palette's), runs the screen stack with `ctx` (its time,
// delta and input are the caller's) and composites the cairo layer over the
// GPU draws. The caller presents.
void drawFrame(SDL_Renderer* renderer, FrameLayer& layer, Ctx& ctx, int outW, int outH, double scale);

}  // namespace ui
