// The game as it is installed: the Debian package CPack makes, unpacked into
// a throw-away root, must hold the game, its whole asset tree and its menu
// entry, and the game from there must find its assets; and a build folder
// finds the repository's tree without installing anything.
#include <gtest/gtest.h>

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <limits.h>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/fs.h"
#include "tests/assets/asset_tree.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::ExitStatus;
using testsupport::Process;
using testsupport::TempDir;
using Env = std::map<std::string, std::optional<std::string>>;

const char* const kAppId = "software.quillmoss.tessellatrix";

// The full path of a program on PATH, or "" when there is none.
std::string which(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream dirs(path ? path : "");
  for (std::string dir; std::getline(dirs, dir, ':');) {
    const std::string candidate = dir + "/" + name;
    if (::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  return "";
}

std::string realPath(const std::string& p) {
  char buf[PATH_MAX];
  return ::realpath(p.c_str(), buf) ? std::string(buf) : std::string();
}

// The asset lookup reads these; none of them may steer the runs below.
Env cleanEnv() { return {{"SNAP", std::nullopt}, {"APPDIR", std::nullopt}, {"TESSELLATRIX_ASSET_DIR", std::nullopt}}; }

struct Outcome {
  ExitStatus status;
  std::string out, err;
};

Outcome runTo(const std::vector<std::string>& argv, const std::string& logDir, double seconds, const Env& env = cleanEnv()) {
  platform::fs::ensureDir(logDir);
  Process p(argv, env, logDir);
  Outcome r;
  r.status = p.wait(seconds);
  r.out = p.out();
  r.err = p.err();
  return r;
}

// "Key=" line of a desktop entry's main group.
std::string desktopValue(const std::string& entry, const std::string& key) {
  std::istringstream in(entry);
  for (std::string line; std::getline(in, line);) {
    if (line.rfind(key + "=", 0) == 0) return line.substr(key.size() + 1);
  }
  return "";
}

TEST(BuildFolder, TheGameFindsTheRepositoryTreeWithoutInstalling) {
  if (platform::fs::isDir("/usr/share/tessellatrix/assets/levels"))
    GTEST_SKIP() << "an installed package's tree would be found first";
  TempDir logs;
  // The probe lies in the build folder beside the game and resolves the same.
  const Outcome r = runTo({TESSELLATRIX_PROBE}, logs.file("probe"), 10);
  ASSERT_TRUE(r.status.exited) << r.err;
  EXPECT_EQ(realPath(r.out.substr(0, r.out.find('\n'))), realPath(assettest::kRoot));
}

TEST(DesktopEntry, TheValidatorsAcceptTheDesktopFileAndTheMetainfo) {
  const std::string desktopValidate = which("desktop-file-validate");
  const std::string appstream = which("appstreamcli");
  if (desktopValidate.empty() || appstream.empty())
    GTEST_SKIP() << "desktop-file-utils and appstream are not installed";
  TempDir logs;
  const std::string dir = std::string(assettest::kRoot) + "/packaging/";
  const Outcome desktop = runTo({desktopValidate, dir + kAppId + ".desktop"}, logs.file("desktop"), 30);
  EXPECT_EQ(desktop.status.code, 0) << desktop.out << desktop.err;
  EXPECT_EQ(desktop.out + desktop.err, "");
  const Outcome meta = runTo({appstream, "validate", "--no-net", dir + kAppId + ".metainfo.xml"}, logs.file("meta"), 60);
  EXPECT_EQ(meta.status.code, 0) << meta.out << meta.err;
}

class DebianPackage : public ::testing::Test {
 protected:
  void SetUp() override {
    cpack = which("cpack");
    dpkgDeb = which("dpkg-deb");
    if (cpack.empty() || dpkgDeb.empty() || which("dpkg-shlibdeps").empty())
      GTEST_SKIP() << "cpack, dpkg-deb or dpkg-shlibdeps is missing";
  }

  std::string buildAndUnpack() {
    const Outcome pack = runTo({cpack, "-G", "DEB", "--config", std::string(TESSELLATRIX_BUILD_DIR) + "/CPackConfig.cmake",
                          "-B", work.file("pkg")},
                         work.file("log-cpack"), 600);
    EXPECT_EQ(pack.status.code, 0) << pack.out << pack.err;
    for (const std::string& name : platform::fs::listDir(work.file("pkg"))) {
      if (name.size() > 4 && name.substr(name.size() - 4) == ".deb") deb = work.file("pkg/" + name);
    }
    if (deb.empty()) return "";
    const Outcome unpack = runTo({dpkgDeb, "-x", deb, work.file("root")}, work.file("log-unpack"), 120);
    EXPECT_EQ(unpack.status.code, 0) << unpack.err;
    return work.file("root");
  }

  std::string cpack, dpkgDeb, deb;
  TempDir work;
};

TEST_F(DebianPackage, InstallsAGameThatFindsItsAssetsAndAMenuEntryThatStartsIt) {
  const std::string root = buildAndUnpack();
  ASSERT_FALSE(root.empty()) << "no .deb was made";

  // Dependencies come from the libraries the game links, SDL among them.
  const Outcome depends = runTo({dpkgDeb, "-f", deb, "Depends"}, work.file("log-depends"), 30);
  EXPECT_NE(depends.out.find("libsdl2-2.0-0"), std::string::npos) << depends.out;

  // The whole tree, byte for byte in size, where the game looks for it.
  const std::string share = root + "/usr/share/tessellatrix";
  const std::string source = std::string(assettest::kRoot) + "/assets";
  const std::vector<std::string> files = assettest::listTree(source);
  EXPECT_EQ(assettest::listTree(share + "/assets"), files);
  for (const std::string& rel : files)
    EXPECT_EQ(platform::fs::fileSize(share + "/assets/" + rel), platform::fs::fileSize(source + "/" + rel)) << rel;

  // The menu entry starts a program that is there, with an icon that is there.
  const std::string entry = testsupport::readFile(root + "/usr/share/applications/" + kAppId + ".desktop");
  ASSERT_FALSE(entry.empty());
  EXPECT_TRUE(platform::fs::isFile(root + "/usr/bin/" + desktopValue(entry, "Exec")));
  const std::string icon = desktopValue(entry, "Icon");
  EXPECT_TRUE(platform::fs::isFile(root + "/usr/share/icons/hicolor/scalable/apps/" + icon + ".svg"));
  for (const char* size : {"16x16", "32x32", "48x48", "128x128", "256x256"})
    EXPECT_TRUE(platform::fs::isFile(root + "/usr/share/icons/hicolor/" + size + "/apps/" + icon + ".png")) << size;
  EXPECT_TRUE(platform::fs::isFile(root + "/usr/share/metainfo/" + std::string(kAppId) + ".metainfo.xml"));

  // The game's own lookup, run from the unpacked /usr/bin, lands on the
  // unpacked share folder, not on the repository or the build folder.
  const std::string probe = root + "/usr/bin/asset_root_probe";
  const Outcome copy = runTo({"/bin/cp", TESSELLATRIX_PROBE, probe}, work.file("log-copy"), 30);
  ASSERT_EQ(copy.status.code, 0) << copy.err;
  const Outcome found = runTo({probe}, work.file("log-probe"), 10);
  EXPECT_EQ(realPath(found.out.substr(0, found.out.find('\n'))), realPath(share));
  ::remove(probe.c_str());

  // The installed game itself starts from there.
  const Outcome version = runTo({root + "/usr/bin/tessellatrix", "--version"}, work.file("log-version"), 10);
  EXPECT_EQ(version.status.code, 0);
  EXPECT_EQ(version.out, "Quillmoss's Puzzle 1.1.0 (Build 1000)\n");

  testsupport::XServer x(1280, 800);
  ASSERT_TRUE(x.ok()) << "Xvfb did not start";
  Env env = cleanEnv();
  env["DISPLAY"] = x.display();
  env["SDL_VIDEODRIVER"] = std::nullopt;
  env["XDG_RUNTIME_DIR"] = work.path();
  platform::fs::ensureDir(work.file("log-game"));
  Process game({root + "/usr/bin/tessellatrix"}, env, work.file("log-game"));
  ASSERT_TRUE(game.waitForOutput("[video] ", 30)) << game.err();
  game.signal(SIGTERM);
  const ExitStatus st = game.wait(15);
  EXPECT_TRUE(st.exited && st.code == 0) << game.err();
  // Missing fonts, pictures or sounds are reported on standard error.
  for (const char* complaint : {"[fonts]", "[image]", "fehlt"})
    EXPECT_EQ(game.err().find(complaint), std::string::npos) << game.err();
}

}  // namespace
