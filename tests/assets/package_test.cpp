// The game as it is installed: the Debian package CPack makes, unpacked into
// a throw-away root, holds the game, its whole asset tree and a valid menu
// entry, and the game from there finds its assets; and a build folder finds
// the repository's tree without installing anything.
#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <cstdlib>

#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

using Env = std::map<std::string, std::optional<std::string>>;

const std::string kAppId = "software.quillmoss.tessellatrix";
// The asset lookup reads these; none of them may steer the runs below.
const Env kCleanEnv = {{"SNAP", std::nullopt}, {"APPDIR", std::nullopt}, {"TESSELLATRIX_ASSET_DIR", std::nullopt}};

// Runs a program found on PATH to its end, expecting success, and gives its
// standard output; output and error are kept in `logDir`.
std::string run(std::vector<std::string> argv, const std::string& logDir) {
  argv.insert(argv.begin(), "/usr/bin/env");
  platform::fs::ensureDir(logDir);
  testsupport::Process p(argv, kCleanEnv, logDir);
  const testsupport::ExitStatus st = p.wait(600);
  EXPECT_TRUE(st.exited && st.code == 0) << argv[1] << ": " << p.out() << p.err();
  return p.out();
}

// The real path named by the first line of `out`.
std::string realFirstLine(const std::string& out) {
  char buf[PATH_MAX];
  return ::realpath(out.substr(0, out.find('\n')).c_str(), buf) ? std::string(buf) : "(" + out + ")";
}

TEST(BuildFolder, TheGameFindsTheRepositoryTreeWithoutInstalling) {
  if (platform::fs::isDir("/usr/share/tessellatrix/assets/levels"))
    GTEST_SKIP() << "an installed package's tree would be found first";
  testsupport::TempDir logs;
  // The probe lies in the build folder beside the game and resolves the same.
  EXPECT_EQ(realFirstLine(run({TESSELLATRIX_PROBE}, logs.path())), realFirstLine(TESSELLATRIX_SOURCE_DIR));
}

TEST(DebianPackage, InstallsAGameThatFindsItsAssetsAndAMenuEntryThatStartsIt) {
  testsupport::TempDir work;
  run({"cpack", "-G", "DEB", "--config", TESSELLATRIX_BUILD_DIR "/CPackConfig.cmake", "-B", work.file("pkg")},
      work.file("log-cpack"));
  std::string deb;
  for (const std::string& name : platform::fs::listDir(work.file("pkg")))
    if (name.size() > 4 && name.substr(name.size() - 4) == ".deb") deb = work.file("pkg/" + name);
  ASSERT_FALSE(deb.empty()) << "no .deb was made";
  const std::string root = work.file("root"), share = root + "/usr/share/tessellatrix";
  run({"dpkg-deb", "-x", deb, root}, work.file("log-unpack"));
  // Dependencies come from the libraries the game links, SDL among them.
  EXPECT_NE(run({"dpkg-deb", "-f", deb, "Depends"}, work.file("log-depends")).find("libsdl2-2.0-0"), std::string::npos);
  // The whole tree, byte for byte, where the game looks for it.
  run({"diff", "-rq", TESSELLATRIX_SOURCE_DIR "/assets", share + "/assets"}, work.file("log-diff"));

  // A menu entry and metainfo the validators accept, starting a program that
  // is there, with icons that are there.
  const std::string entry = root + "/usr/share/applications/" + kAppId + ".desktop";
  EXPECT_EQ(run({"desktop-file-validate", entry}, work.file("log-desktop")), "");
  run({"appstreamcli", "validate", "--no-net", root + "/usr/share/metainfo/" + kAppId + ".metainfo.xml"},
      work.file("log-meta"));
  const std::string text = testsupport::readFile(entry);
  for (const std::string& line : {std::string("\nExec=tessellatrix %F\n"), "\nIcon=" + kAppId + "\n"})
    EXPECT_NE(text.find(line), std::string::npos) << text;
  for (const std::string& icon : {"scalable/apps/" + kAppId + ".svg", "48x48/apps/" + kAppId + ".png"})
    EXPECT_TRUE(platform::fs::isFile(root + "/usr/share/icons/hicolor/" + icon)) << icon;

  // The game's own lookup, run from the unpacked /usr/bin, lands on the
  // unpacked share folder, not on the repository or the build folder.
  const std::string probe = root + "/usr/bin/asset_root_probe";
  run({"cp", TESSELLATRIX_PROBE, probe}, work.file("log-copy"));
  EXPECT_EQ(realFirstLine(run({probe}, work.file("log-probe"))), realFirstLine(share));

  // The installed game starts on a display without complaining about a
  // missing font, picture or sound.
  testsupport::XServer x(1280, 800);
  ASSERT_TRUE(x.ok()) << "Xvfb did not start";
  Env env = kCleanEnv;
  env.insert({{"DISPLAY", x.display()}, {"SDL_VIDEODRIVER", std::nullopt}, {"XDG_RUNTIME_DIR", work.path()}});
  platform::fs::ensureDir(work.file("log-game"));
  testsupport::Process game({root + "/usr/bin/tessellatrix"}, env, work.file("log-game"));
  ASSERT_TRUE(game.waitForOutput("[video] ", 30)) << game.err();
  game.signal(SIGTERM);
  const testsupport::ExitStatus st = game.wait(15);
  EXPECT_TRUE(st.exited && st.code == 0) << game.err();
  for (const char* complaint : {"[fonts]", "[image]", "fehlt"})
    EXPECT_EQ(game.err().find(complaint), std::string::npos) << game.err();
}

}  // namespace
