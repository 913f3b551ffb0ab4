#include "tests/support/font_support.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
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

std::vector<std::string> registeredFontFiles() {
  std::vector<std::string> files;
  FcFontSet* set = FcConfigGetFonts(FcConfigGetCurrent(), FcSetApplication);
  for (int i = 0; set && i < set->nfont; ++i) {
    FcChar8* file = nullptr;
    if (FcPatternGetString(set->fonts[i], FC_FILE, 0, &file) == FcResultMatch) {
      files.emplace_back(reinterpret_cast<const char*>(file));
    }
  }
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

}  // namespace testsupport
