// The one picture the playing screen is using, decoded at the size it is
// shown and kept until another level or size is asked for.
#pragma once

#include <cairo.h>

#include <string>

namespace ui {

// The cached surface of that level at that bound, or null (unknown level,
// unreadable file). Owned by the cache: valid until the next call with
// another level or bound, or until imagesShutdown().
cairo_surface_t* boardImage(const std::string& levelId, int maxW, int maxH);
// Releases the cached picture (textures are released by gpuShutdown).
void imagesShutdown();

}  // namespace ui
