// Level pictures as small cached textures for the level-select and gallery
// grids, cropped to fill their box; the blurred variant for locked levels.
#pragma once

#include <SDL.h>

#include <string>

namespace ui {

std::string levelThumbKey(const std::string& levelId, bool blurred, int w, int h);
// w and h in pixels. Null for an unknown level or an empty size; an
// unreadable picture leaves a black thumbnail.
SDL_Texture* levelThumb(const std::string& levelId, bool blurred, int w, int h);

}  // namespace ui
