// Fontconfig set-up for tests that must see the game's own fonts and nothing
// else, so a glyph missing from the shipped files cannot hide behind a font
// that happens to be installed on the machine.
#pragma once

#include <string>

namespace testsupport {

// The root holding the shipped asset tree: TESSELLATRIX_ASSET_DIR when it is
// set (to try another tree), else the repository itself.
std::string shippedAssetRoot();
// Points the game's asset lookup at shippedAssetRoot(). Call before anything
// asks paths:: for the asset folder (it is computed once per process).
void useShippedAssets();
// Replaces fontconfig's current configuration with an empty one. Call before
// pango is first used: its font list is read once per process.
void isolateFonts();

}  // namespace testsupport
