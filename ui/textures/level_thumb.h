// Level pictures as small cached textures for the level-select and gallery
// grids, cropped to fill their box; the blurred variant for locked levels.
// A painted thumbnail is also kept on disk (ui/textures/thumb_cache.h), so
// later runs load it instead of decoding the photograph.
#pragma once

#include <SDL.h>

#include <string>

#include "ui/input.h"

namespace ui {

std::string levelThumbKey(const std::string& levelId, bool blurred, int w, int h);
// w and h in pixels. Null for an unknown level or an empty size; an
// unreadable picture leaves a black thumbnail.
SDL_Texture* levelThumb(const std::string& levelId, bool blurred, int w, int h);

// Grids of cards ask for their thumbnails through these, so that no frame
// stalls on decoding: each frame paints only what fits its time budget,
// the cards the player sees first, and a card shows its plain panel until
// its picture is ready.
//
// Starts this frame's budget; call once a frame before the first request.
// Asks for the next frame while cards still wait for their pictures or
// painted ones for their turn to be written to disk.
void thumbsBeginFrame(Ctx& ctx);
// The thumbnail if it is ready, or can be made within this frame's budget;
// else null. Visible requests come first: one for a card off screen is only
// served once every visible one of the frame is.
SDL_Texture* levelThumbInBudget(const std::string& levelId, bool blurred, int w, int h, bool visible);
// Visible thumbnails asked for this frame and not ready: while above 0 the
// grid needs more frames.
int thumbsPending();

}  // namespace ui
