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

namespace {

std::vector<std::string> applicationFontStrings(const char* property) {
  std::vector<std::string> values;
  FcFontSet* set = FcConfigGetFonts(FcConfigGetCurrent(), FcSetApplication);
  for (int i = 0; set && i < set->nfont; ++i) {
    FcChar8* value = nullptr;
    for (int n = 0; FcPatternGetString(set->fonts[i], property, n, &value) == FcResultMatch; ++n) {
      values.emplace_back(reinterpret_cast<const char*>(value));
    }
  }
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  return values;
}

}  // namespace

std::vector<std::string> registeredFontFiles() { return applicationFontStrings(FC_FILE); }

std::vector<std::string> registeredFontFamilies() { return applicationFontStrings(FC_FAMILY); }

}  // namespace testsupport
