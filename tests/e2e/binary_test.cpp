// The real game binary, on a private X server.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <thread>

#include "js/json.h"
#include "platform/fs.h"
#include "platform/seal.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::ExitStatus;
using testsupport::Process;
using testsupport::TempDir;
using testsupport::XServer;

using Env = std::map<std::string, std::optional<std::string>>;

class GameBinary : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(x.ok()) << "Xvfb did not start"; }

  // The game on the test's X server with its own runtime folder for crash
  // reports; `extra` adds or removes variables.
  std::unique_ptr<Process> start(const std::vector<std::string>& args = {}, const Env& extra = {}) {
    Env env = {{"DISPLAY", x.display()},
               {"SDL_VIDEODRIVER", std::nullopt},
               {"WAYLAND_DISPLAY", std::nullopt},
               {"XDG_RUNTIME_DIR", runtime.path()}};
    for (const auto& [k, v] : extra) env[k] = v;
    std::vector<std::string> argv = {testsupport::gameBinary()};
    argv.insert(argv.end(), args.begin(), args.end());
    // Each run logs into its own folder, so a wait never reads an earlier run's output.
    const std::string dir = logs.file(std::to_string(runs++));
    platform::fs::ensureDir(dir);
    return std::make_unique<Process>(argv, env, dir);
  }

  std::unique_ptr<Process> startRunning(const std::vector<std::string>& args = {}, const Env& extra = {}) {
    auto p = start(args, extra);
    EXPECT_TRUE(p->waitForOutput("[video] Treiber x11, Renderer ", 30)) << p->err();
    return p;
  }

  static bool waitForStats(const Process& p, const std::string& text) {
    for (int i = 0; i < 300; ++i) {
      if (p.err().find(text) != std::string::npos) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return false;
  }

  XServer x{1600, 1000};
  TempDir runtime, logs;
  int runs = 0;
};

TEST_F(GameBinary, StartsWithTheVideoLineAndEndsCleanlyOnSigterm) {
  auto game = startRunning();
  const std::string out = game->out();
  EXPECT_TRUE(out.find(" (beschleunigt)") != std::string::npos || out.find(" (Software!)") != std::string::npos);
  EXPECT_TRUE(out.find(", VSync an\n") != std::string::npos || out.find(", VSync AUS\n") != std::string::npos);
  game->signal(SIGTERM);
  const ExitStatus st = game->wait(15);
  EXPECT_TRUE(st.exited) << "signal " << st.signal;
  EXPECT_EQ(st.code, 0);
}

TEST_F(GameBinary, SigintAndSighupAlsoEndNormally) {
  for (int sig : {SIGINT, SIGHUP}) {
    auto game = startRunning();
    game->signal(sig);
    const ExitStatus st = game->wait(15);
    EXPECT_TRUE(st.exited);
    EXPECT_EQ(st.code, 0);
  }
}

TEST_F(GameBinary, ASecondSignalEndsItAtOnce) {
  auto game = startRunning();
  // Both signals are pending when the process continues, so the second
  // handler call happens before the loop can see the first.
  game->signal(SIGSTOP);
  game->signal(SIGTERM);
  game->signal(SIGHUP);
  game->signal(SIGCONT);
  const ExitStatus st = game->wait(15);
  ASSERT_TRUE(st.exited);
  EXPECT_TRUE(st.code == 128 + SIGTERM || st.code == 128 + SIGHUP) << st.code;
}

TEST_F(GameBinary, ASegfaultLeavesACrashReportAndStillKills) {
  auto game = startRunning({}, {{"TESSELLATRIX_SCREEN", "playing"}, {"TESSELLATRIX_STATS", ""}});
  // The screen stack notes what it shows once the first frame is built; a
  // statistics line proves frames have been drawn.
  ASSERT_TRUE(waitForStats(*game, "[stats] ")) << game->err();
  game->signal(SIGSEGV);
  const ExitStatus st = game->wait(15);
  EXPECT_FALSE(st.exited);
  EXPECT_EQ(st.signal, SIGSEGV);
  const std::string report = testsupport::readFile(runtime.file("tessellatrix_crash.txt"));
  EXPECT_EQ(report.rfind("Quillmoss's Puzzle 1.1.0 (Build 1000)\nportiert aus 1.1 Build 1299\n", 0), 0u) << report;
  EXPECT_NE(report.find("Signal: SIGSEGV (Zugriff auf fremden Speicher)\n"), std::string::npos);
  EXPECT_NE(report.find("Zuletzt: Bildschirm 3, Bild level1, Raster 6x7\n"), std::string::npos);
  EXPECT_NE(report.find("Diese Datei wird NICHT verschickt."), std::string::npos);
}

TEST_F(GameBinary, WithoutADisplaySdlInitFails) {
  auto game = start({}, {{"DISPLAY", std::nullopt}});
  const ExitStatus st = game->wait(15);
  ASSERT_TRUE(st.exited);
  EXPECT_EQ(st.code, 1);
  EXPECT_NE(game->err().find("SDL_Init: "), std::string::npos) << game->err();
  EXPECT_EQ(game->out().find("[video]"), std::string::npos);
}

TEST_F(GameBinary, VersionAndHelpNeedNoDisplay) {
  auto version = start({"--version", "--help"}, {{"DISPLAY", std::nullopt}});
  ASSERT_TRUE(version->wait(10).exited);
  EXPECT_EQ(version->out(), "Quillmoss's Puzzle 1.1.0 (Build 1000)\n");
  auto help = start({"--fullscreen", "--help"}, {{"DISPLAY", std::nullopt}});
  const ExitStatus st = help->wait(10);
  EXPECT_EQ(st.code, 0);
  EXPECT_EQ(help->out().rfind("Quillmoss's Puzzle 1.1.0\n  --version    Version ausgeben\n", 0), 0u);
}

TEST_F(GameBinary, StatisticsLineShowsTheSizeAskedForOnTheCommandLine) {
  auto game = startRunning({"--size", "1000x700"}, {{"TESSELLATRIX_STATS", ""}});
  EXPECT_TRUE(waitForStats(*game, "Kopien  1000x700\n")) << game->err();
  EXPECT_NE(game->err().find("[stats] "), std::string::npos);
  game->signal(SIGTERM);
  EXPECT_EQ(game->wait(15).code, 0);
}

TEST_F(GameBinary, AnUnknownStartScreenPrintsTheChoicesAndStartsAnyway) {
  auto game = startRunning({}, {{"TESSELLATRIX_SCREEN", "credits"}});
  EXPECT_NE(game->err().find("TESSELLATRIX_SCREEN: menu levels playing gallery settings about licenses\n"),
            std::string::npos);
  game->signal(SIGTERM);
  EXPECT_EQ(game->wait(15).code, 0);
}

// The settings file the game leaves in a data folder, unsealed; null when
// there is none or it does not open.
js::Value storedSettings(const TempDir& data) {
  std::string plain;
  const std::string sealed = testsupport::readFile(data.file("tessellatrix/settings.dat"));
  if (platform::saveDecrypt(sealed, &plain) != platform::SealResult::Ok) return js::Value();
  return js::parse(plain);
}

TEST_F(GameBinary, FullscreenOnceOnTheCommandLineIsStoredWhenSigtermEndsIt) {
  TempDir data;
  const Env env = {{"XDG_DATA_HOME", data.path()}};
  auto first = startRunning({"--fullscreen"}, env);
  first->signal(SIGTERM);
  ASSERT_EQ(first->wait(15).code, 0);
  const js::Value stored = storedSettings(data);
  ASSERT_TRUE(stored.isObject()) << "no readable settings.dat";
  EXPECT_EQ(stored.size(), 21u);
  EXPECT_TRUE(stored["fullscreen"].boolean);
  EXPECT_FALSE(platform::fs::isFile(data.file("tessellatrix/settings.dat.neu")));

  // Started again without the option, the game keeps the stored choice.
  auto second = startRunning({}, env);
  second->signal(SIGTERM);
  ASSERT_EQ(second->wait(15).code, 0);
  EXPECT_TRUE(storedSettings(data)["fullscreen"].boolean);
  EXPECT_EQ(second->err().find("[storage]"), std::string::npos) << second->err();
}

// The saves file a game left, unsealed; null when there is none.
js::Value storedSaves(const TempDir& data) {
  std::string plain;
  const std::string sealed = testsupport::readFile(data.file("tessellatrix/saves.dat"));
  if (platform::saveDecrypt(sealed, &plain) != platform::SealResult::Ok) return js::Value();
  return js::parse(plain);
}

TEST_F(GameBinary, ADemoOfAllPiecesIsSolvedOnTheFirstFrameAndRecorded) {
  TempDir data;
  auto game = startRunning({}, {{"XDG_DATA_HOME", data.path()},
                                {"TESSELLATRIX_SCREEN", "playing"},
                                {"TESSELLATRIX_DEMO", "100"},
                                {"TESSELLATRIX_STATS", ""}});
  ASSERT_TRUE(waitForStats(*game, "[stats] ")) << game->err();
  game->signal(SIGTERM);
  ASSERT_EQ(game->wait(15).code, 0);
  const js::Value saves = storedSaves(data);
  ASSERT_TRUE(saves.isObject()) << "no readable saves.dat";
  ASSERT_EQ(saves["solves_list"].size(), 1u);
  const js::Value& solve = saves["solves_list"][0];
  EXPECT_EQ(solve["imageId"].string, "level1");
  EXPECT_EQ(solve["rows"].asInt(0), 6) << "the default difficulty";
  EXPECT_EQ(solve["cols"].asInt(0), 7);
  EXPECT_LT(solve["elapsedMs"].asInt(-1), 1000);
  EXPECT_FALSE(saves.has("current_puzzle")) << "a solved game is not kept";
}

}  // namespace
