#include "platform/paths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::ScopedEnv;
using testsupport::TempDir;

// A folder that qualifies as an asset root: it has both required subfolders.
std::string makeAssetRoot(const TempDir& dir, const std::string& name) {
  const std::string root = dir.file(name);
  platform::fs::ensureDir(root + "/assets/fonts");
  platform::fs::ensureDir(root + "/assets/levels");
  return root;
}

// Runs `fn` with the working directory switched to `dir`.
template <typename Fn>
auto inDirectory(const std::string& dir, Fn fn) {
  char old[4096];
  EXPECT_NE(::getcwd(old, sizeof old), nullptr);
  EXPECT_EQ(::chdir(dir.c_str()), 0);
  auto result = fn();
  EXPECT_EQ(::chdir(old), 0);
  return result;
}

TEST(Paths, ExeDirIsTheFolderOfTheRunningProgram) {
  const std::string dir = paths::exeDir();
  ASSERT_FALSE(dir.empty());
  EXPECT_NE(dir.back(), '/');
  EXPECT_TRUE(platform::fs::isFile(dir + "/platform_tests"));
}

TEST(Paths, DataDirFollowsXdgDataHomeAndIsCreated) {
  TempDir dir;
  ScopedEnv xdg("XDG_DATA_HOME", dir.file("xdg"));
  EXPECT_EQ(paths::resolveDataDir(), dir.file("xdg/tessellatrix"));
  EXPECT_TRUE(platform::fs::isDir(dir.file("xdg/tessellatrix")));
}

TEST(Paths, EmptyXdgDataHomeCountsAsUnset) {
  TempDir dir;
  ScopedEnv xdg("XDG_DATA_HOME", std::string());
  ScopedEnv home("HOME", dir.path());
  EXPECT_EQ(paths::resolveDataDir(), dir.path() + "/.local/share/tessellatrix");
}

TEST(Paths, WithoutXdgOrHomeTheDataDirIsRelativeToTheWorkingDirectory) {
  TempDir dir;
  ScopedEnv xdg("XDG_DATA_HOME", std::nullopt);
  ScopedEnv home("HOME", std::nullopt);
  const std::string got = inDirectory(dir.path(), [] { return paths::resolveDataDir(); });
  EXPECT_EQ(got, "./.local/share/tessellatrix");
  EXPECT_TRUE(platform::fs::isDir(dir.file(".local/share/tessellatrix")));
}

TEST(Paths, CacheDirFollowsXdgCacheHomeThenHome) {
  TempDir dir;
  {
    ScopedEnv xdg("XDG_CACHE_HOME", dir.file("cache"));
    EXPECT_EQ(paths::resolveCacheDir(), dir.file("cache/tessellatrix"));
  }
  ScopedEnv xdg("XDG_CACHE_HOME", std::string());
  ScopedEnv home("HOME", dir.file("home"));
  EXPECT_EQ(paths::resolveCacheDir(), dir.file("home/.cache/tessellatrix"));
  EXPECT_TRUE(platform::fs::isDir(dir.file("home/.cache/tessellatrix")));
  ScopedEnv noHome("HOME", std::nullopt);
  EXPECT_EQ(inDirectory(dir.path(), [] { return paths::resolveCacheDir(); }), "./.cache/tessellatrix");
}

TEST(Paths, TheFirstAnswerIsKeptForTheWholeProcess) {
  TempDir a, b;
  ScopedEnv first("XDG_DATA_HOME", a.path());
  const std::string dir = paths::dataDir();
  ScopedEnv second("XDG_DATA_HOME", b.path());
  EXPECT_EQ(paths::dataDir(), dir);
  EXPECT_EQ(&paths::dataDir(), &paths::dataDir());
}

TEST(Paths, PackagingRootsWinOverTheOverrideVariable) {
  TempDir dir;
  const std::string snap = makeAssetRoot(dir, "snap/usr/share/tessellatrix");
  const std::string appimage = makeAssetRoot(dir, "appdir/usr/share/tessellatrix");
  const std::string override = makeAssetRoot(dir, "override");
  ScopedEnv envSnap("SNAP", dir.file("snap"));
  ScopedEnv envApp("APPDIR", dir.file("appdir"));
  ScopedEnv envDir("TESSELLATRIX_ASSET_DIR", override);
  EXPECT_EQ(paths::resolveAssetDir(), snap);
  {
    ScopedEnv noSnap("SNAP", std::string());
    EXPECT_EQ(paths::resolveAssetDir(), appimage);
  }
  ScopedEnv noSnap("SNAP", std::nullopt);
  ScopedEnv noApp("APPDIR", std::nullopt);
  EXPECT_EQ(paths::resolveAssetDir(), override);
}

TEST(Paths, ARootWithFontsButNoLevelsIsSkipped) {
  TempDir dir;
  platform::fs::ensureDir(dir.file("snap/usr/share/tessellatrix/assets/fonts"));
  const std::string override = makeAssetRoot(dir, "override");
  ScopedEnv envSnap("SNAP", dir.file("snap"));
  ScopedEnv envApp("APPDIR", std::nullopt);
  ScopedEnv envDir("TESSELLATRIX_ASSET_DIR", override);
  EXPECT_EQ(paths::resolveAssetDir(), override);
  EXPECT_EQ(paths::asset("assets/fonts/x.ttf"), paths::assetDir() + "/assets/fonts/x.ttf");
}

TEST(Paths, TheWorkingDirectoryIsTheLastCandidate) {
  TempDir dir;
  makeAssetRoot(dir, "cwd");
  ScopedEnv envSnap("SNAP", std::nullopt);
  ScopedEnv envApp("APPDIR", std::nullopt);
  ScopedEnv envDir("TESSELLATRIX_ASSET_DIR", std::nullopt);
  const std::string exe = paths::exeDir();
  const std::string got = inDirectory(dir.file("cwd"), [] { return paths::resolveAssetDir(); });
  // Roots derived from the executable, or an installed copy, come before ".".
  for (const std::string& earlier : {exe + "/../share/tessellatrix", std::string("/usr/share/tessellatrix"),
                                     std::string("/app/share/tessellatrix"), exe, exe + "/.."}) {
    if (platform::fs::isDir(earlier + "/assets/fonts") && platform::fs::isDir(earlier + "/assets/levels")) {
      EXPECT_EQ(got, earlier);
      return;
    }
  }
  EXPECT_EQ(got, ".");
}

}  // namespace
