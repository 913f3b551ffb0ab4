// What the asset tests share: where the repository's tree is and a listing
// of every file under a folder.
#pragma once

#include <string>
#include <vector>

namespace assettest {

// The repository root, which holds the "assets" tree.
inline constexpr const char* kRoot = TESSELLATRIX_SOURCE_DIR;

// Paths of every regular file below `dir`, relative to it, sorted.
std::vector<std::string> listTree(const std::string& dir);

}  // namespace assettest
