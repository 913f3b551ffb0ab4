#include "tests/support/font_support.h"

#include <fontconfig/fontconfig.h>

#include <cstdlib>

namespace testsupport {

std::string shippedAssetRoot() {
  const char* dir = std::getenv("TESSELLATRIX_ASSET_DIR");
  return (dir && *dir) ? std::string(dir) : std::string(TESSELLATRIX_SOURCE_DIR);
}

void useShippedAssets() { ::setenv("TESSELLATRIX_ASSET_DIR", shippedAssetRoot().c_str(), 1); }

void isolateFonts() {
  FcConfig* empty = FcConfigCreate();
  FcConfigSetCurrent(empty);
  FcConfigDestroy(empty);  // the current configuration keeps its own reference
}

}  // namespace testsupport
