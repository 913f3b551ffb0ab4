#include "ui/textures/board_image.h"

#include <set>

#include "core/catalog.h"
#include "platform/image.h"

namespace ui {

namespace {

struct BoardCache {
  std::string levelId;
  int maxW = 0, maxH = 0;
  cairo_surface_t* surface = nullptr;
  // Levels whose picture could not be read: asked for every frame, they are
  // not decoded (and reported) again.
  std::set<std::string> unreadable;

  ~BoardCache() { clear(); }
  void clear() {
    if (surface) cairo_surface_destroy(surface);
    surface = nullptr;
    levelId.clear();
  }
};

BoardCache& cache() {
  static BoardCache c;
  return c;
}

}  // namespace

cairo_surface_t* boardImage(const std::string& levelId, int maxW, int maxH) {
  BoardCache& c = cache();
  if (c.surface && c.levelId == levelId && c.maxW == maxW && c.maxH == maxH) return c.surface;
  const core::Level* level = core::levelById(levelId);
  if (!level || c.unreadable.count(levelId)) return nullptr;
  // A failed load keeps the old picture: showing the previous board beats
  // showing none while the player resizes.
  cairo_surface_t* loaded = platform::loadImage(core::levelImagePath(*level), maxW, maxH);
  if (!loaded) {
    c.unreadable.insert(levelId);
    return nullptr;
  }
  c.clear();
  c.levelId = levelId;
  c.maxW = maxW;
  c.maxH = maxH;
  c.surface = loaded;
  return loaded;
}

void imagesShutdown() {
  cache().clear();
  cache().unreadable.clear();
}

}  // namespace ui
