// Where the game's files live: the executable's folder, the per-user data and
// cache folders, and the root of the read-only asset tree.
#pragma once

#include <string>

namespace paths {

std::string exeDir();
// Computed once on first use and kept for the life of the process; later
// changes to the environment have no effect.
const std::string& dataDir();
const std::string& cacheDir();
const std::string& assetDir();
std::string asset(const std::string& rel);
bool ensureDir(const std::string& p);
// Hook the start-up calls before text is set up; fontconfig needs nothing
// prepared on this platform.
void prepareFontconfig();

// The uncached computations behind the three folders, reading the environment
// as it is now (the data and cache folders are created as a side effect).
std::string resolveDataDir();
std::string resolveCacheDir();
std::string resolveAssetDir();

}  // namespace paths
