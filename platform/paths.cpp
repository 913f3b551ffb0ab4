#include "platform/paths.h"

#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "platform/app_info.h"
#include "platform/fs.h"

namespace paths {

namespace {

// An unset variable and an empty one mean the same: "not given".
std::string envOr(const char* name, const std::string& fallback) {
  const char* v = std::getenv(name);
  return (v && *v) ? std::string(v) : fallback;
}

std::string userDir(const char* xdgVar, const char* homeSuffix) {
  const std::string app = platform::kAppDirName;
  const std::string xdg = envOr(xdgVar, "");
  const std::string dir =
      xdg.empty() ? envOr("HOME", ".") + homeSuffix + "/" + app : xdg + "/" + app;
  platform::fs::ensureDir(dir);  // a failure shows up later as failed writes
  return dir;
}

bool holdsAssets(const std::string& root) {
  return platform::fs::isDir(root + "/assets/fonts") && platform::fs::isDir(root + "/assets/levels");
}

}  // namespace

std::string exeDir() {
  char buf[4096];
  const ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
  if (n <= 0) return ".";
  const std::string exe(buf, static_cast<size_t>(n));
  const size_t slash = exe.rfind('/');
  return slash == std::string::npos ? "." : exe.substr(0, slash);
}

std::string resolveDataDir() { return userDir("XDG_DATA_HOME", "/.local/share"); }

std::string resolveCacheDir() { return userDir("XDG_CACHE_HOME", "/.cache"); }

std::string resolveAssetDir() {
  const std::string exe = exeDir();
  const std::string share = "/usr/share/tessellatrix";
  // Packaging roots (snap, AppImage) win over the explicit override, which
  // wins over everything derived from the executable's location.
  std::vector<std::string> candidates;
  if (const std::string snap = envOr("SNAP", ""); !snap.empty()) candidates.push_back(snap + share);
  if (const std::string app = envOr("APPDIR", ""); !app.empty()) candidates.push_back(app + share);
  if (const std::string dir = envOr("TESSELLATRIX_ASSET_DIR", ""); !dir.empty()) candidates.push_back(dir);
  candidates.push_back(exe + "/../share/tessellatrix");
  candidates.push_back(share);
  candidates.push_back("/app/share/tessellatrix");
  candidates.push_back(exe);
  candidates.push_back(exe + "/..");
  candidates.push_back(".");
  for (const std::string& c : candidates) {
    if (holdsAssets(c)) return c;
  }
  return exe;
}

const std::string& dataDir() {
  static const std::string dir = resolveDataDir();
  return dir;
}

const std::string& cacheDir() {
  static const std::string dir = resolveCacheDir();
  return dir;
}

const std::string& assetDir() {
  static const std::string dir = resolveAssetDir();
  return dir;
}

std::string asset(const std::string& rel) { return assetDir() + "/" + rel; }

bool ensureDir(const std::string& p) { return platform::fs::ensureDir(p); }

void prepareFontconfig() {}

}  // namespace paths
