// The thumbnails painted in earlier runs, kept as small JPEG files so a
// grid of level cards opens without decoding a single photograph. An entry
// holds, after its picture, a line naming the source file's size and
// modification time and the picture's own length: a source that changed, an
// entry cut short or one that cannot be read is a miss, and the caller
// paints the thumbnail again. Nothing here is ever required: a folder that
// cannot be written only costs the time of painting.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <string>

namespace ui {

// The entry's picture of exactly w x h pixels, as a new surface the caller
// owns, when it is whole and was made from `sourcePath` as it is now; else null.
cairo_surface_t* loadCachedThumb(const std::string& dir, const std::string& key, const std::string& sourcePath,
                                 int w, int h);
// Writes the picture under a temporary name and renames it into place, so a
// reader never meets half an entry. False when anything failed.
bool storeCachedThumb(const std::string& dir, const std::string& key, const std::string& sourcePath,
                      cairo_surface_t* picture);

// Keeps the `keep` entries used last (loading one counts as a use) and
// removes the others: a grid painted at each window size it was ever shown
// at would otherwise fill the folder without end.
void pruneCachedThumbs(const std::string& dir, size_t keep);

}  // namespace ui
