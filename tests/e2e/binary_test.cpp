// The real game binary on a private X server, driven as a player would with
// xdotool (pointer and keys through the X server, not into the process).
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <set>
#include <thread>

#include "js/json.h"
#include "platform/fs.h"
#include "platform/image.h"
#include "platform/seal.h"
#include "store/pictures.h"
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

  // The game on the test's X server with its own data and runtime folders;
  // `extra` adds or removes variables.
  std::unique_ptr<Process> start(const std::vector<std::string>& args = {}, const Env& extra = {}) {
    Env env = {{"DISPLAY", x.display()},
               {"SDL_VIDEODRIVER", std::nullopt},
               {"WAYLAND_DISPLAY", std::nullopt},
               {"XDG_DATA_HOME", data.path()},
               {"XDG_RUNTIME_DIR", runtime.path()}};
    for (const auto& [k, v] : extra) env[k] = v;
    std::vector<std::string> argv = {testsupport::gameBinary()};
    argv.insert(argv.end(), args.begin(), args.end());
    // Each run logs into its own folder, so a wait never reads an earlier run's output.
    const std::string dir = logs.file(std::to_string(runs++));
    platform::fs::ensureDir(dir);
    return std::make_unique<Process>(argv, env, dir);
  }

  // Started, and past its first frames: the statistics line comes once a
  // second, whether or not a screen at rest drew anything since.
  std::unique_ptr<Process> startDrawing(const std::vector<std::string>& args = {}, const Env& extra = {}) {
    Env env = extra;
    env["TESSELLATRIX_STATS"] = "";
    auto p = start(args, env);
    EXPECT_TRUE(p->waitForOutput("[video] Treiber x11, Renderer ", 30)) << p->err();
    EXPECT_TRUE(waitFor([&] { return p->err().find("[stats] ") != std::string::npos; })) << p->err();
    return p;
  }

  // Runs xdotool on the test's display; the game's window is "%1" after the
  // search. Focus is given once (see the journey): every change of focus
  // would pause the puzzle, as it does for a player.
  bool xdotool(const std::string& commands) {
    const std::string line =
        "DISPLAY=" + x.display() + " xdotool search --sync --name \"Quillmoss\" " + commands + " >/dev/null 2>&1";
    return std::system(line.c_str()) == 0;
  }

  static bool waitFor(const std::function<bool()>& done) {
    for (int i = 0; i < 100; ++i) {
      if (done()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return false;
  }

  // The middle of the longest run of accent-filled pixels down column x of
  // the game's window, the look of a primary button (a shorter run is
  // text); -1 when there is none.
  int primaryButtonAt(int column) {
    int best = 0, bestEnd = 0, run = 0, y = 0;
    for (const uint32_t p : testsupport::windowColumn(x.display(), "Quillmoss", column)) {
      run = std::abs(int(p >> 16) - 0xf5) + std::abs(int(p >> 8 & 255) - 0xa6) + std::abs(int(p & 255) - 0x23) < 8
                ? run + 1 : 0;
      if (run > best) best = run, bestEnd = y;
      ++y;
    }
    return best >= 30 ? bestEnd - best / 2 : -1;
  }
  // Looks until `want` holds of what column x shows (frames take their
  // time on a busy machine); the last look.
  int lookUntil(int column, const std::function<bool(int)>& want) {
    int seen = -1;
    waitFor([&] { return want(seen = primaryButtonAt(column)); });
    return seen;
  }

  // Pieces out of the strips in the saved puzzle.
  int onTable() {
    const js::Value saves = stored("saves.dat");
    const js::Value& pieces = saves["current_puzzle"]["pieces"];
    int n = 0;
    for (size_t i = 0; i < pieces.size(); ++i) n += pieces[i]["inTray"].boolean ? 0 : 1;
    return n;
  }

  // A sealed file the game left, opened; null when missing or not readable.
  js::Value stored(const char* name) {
    std::string plain;
    const std::string sealed = testsupport::readFile(data.file(std::string("tessellatrix/") + name));
    if (platform::saveDecrypt(sealed, &plain) != platform::SealResult::Ok) return js::Value();
    return js::parse(plain);
  }

  XServer x{1600, 1000};
  TempDir data, runtime, logs;
  int runs = 0;
};

// The puzzle starts with every piece in the strips. Two are dragged onto the
// table, with a question opened and cancelled by Escape between them (the
// second drag only lands if that Escape did not leave the puzzle); then
// Escape leaves, Ctrl+Q quits, and both drags are in the saved game.
TEST_F(GameBinary, APlayerDragsPiecesLeavesAndQuitsWithMouseAndKeys) {
  auto game = startDrawing({"--size", "1000x700"}, {{"TESSELLATRIX_SCREEN", "playing"}});
  EXPECT_NE(game->err().find("Kopien  1000x700\n"), std::string::npos) << game->err();
  ASSERT_TRUE(xdotool("windowfocus --sync %1"));
  // Pauses between the steps let the game see each one in its own frame.
  const std::string dragFromStrip =
      "mousemove --window %1 64 160 sleep 0.3 mousedown 1 sleep 0.3 mousemove --window %1 200 300 sleep 0.3 ";
  ASSERT_TRUE(xdotool(dragFromStrip + "mousemove --window %1 500 400 sleep 0.3 mouseup 1"));
  EXPECT_TRUE(waitFor([&] { return onTable() == 1; })) << "saved within moments of the drop";
  ASSERT_TRUE(xdotool("key ctrl+n sleep 0.5 key Escape sleep 0.5"));
  ASSERT_TRUE(xdotool(dragFromStrip + "mousemove --window %1 650 300 sleep 0.3 mouseup 1"));
  EXPECT_TRUE(waitFor([&] { return onTable() == 2; })) << "the Escape that cancelled the question stayed";
  ASSERT_TRUE(xdotool("key Escape sleep 0.5"));
  ASSERT_TRUE(xdotool("key ctrl+q"));
  const ExitStatus st = game->wait(10);
  EXPECT_TRUE(st.exited && st.code == 0) << st.code << " " << st.signal;

  const js::Value puzzle = stored("saves.dat")["current_puzzle"];
  ASSERT_EQ(puzzle["pieces"].size(), 42u) << "level 1 at the default 6 x 7";
  EXPECT_GT(puzzle["elapsedMs"].asInt(0), 500) << "the clock was saved on leaving";
}

// The way in, looked at as a player sees it: the splash shows no button and
// takes the click meant for Quit; the menu's primary button leads the
// column; About leads to Licences and back twice to the menu; and Quit ends
// the game normally. (The level select and back: the keyboard journey.)
TEST_F(GameBinary, APlayerComesInThroughTheSplashLooksAroundAndQuitsFromTheMenu) {
  auto game = start({"--size", "1000x700"});
  ASSERT_TRUE(game->waitForOutput("[video] ", 30)) << game->err();
  ASSERT_TRUE(xdotool("windowfocus --sync %1 sleep 0.5"));
  EXPECT_EQ(primaryButtonAt(350), -1) << "the splash";
  const auto click = [&](int x, int y) {
    return xdotool("mousemove --window %1 " + std::to_string(x) + " " + std::to_string(y) + " click 1");
  };
  const auto is = [](int want) { return [want](int seen) { return seen == want; }; };
  ASSERT_TRUE(click(30, 400));  // beside the menu's buttons, in case the splash has timed out
  const int first = lookUntil(350, [](int seen) { return seen > 0; });
  ASSERT_GT(first, 0) << "the menu, still running";
  ASSERT_TRUE(click(500, first + 4 * 64));  // About, fifth in the column
  const int licenses = lookUntil(390, [&](int seen) { return seen > first + 4 * 64; });
  ASSERT_GT(licenses, first + 4 * 64) << "the about page's one button";
  ASSERT_TRUE(click(500, licenses));
  EXPECT_EQ(lookUntil(390, is(-1)), -1) << "the licences list";
  ASSERT_TRUE(click(60, 32));
  EXPECT_EQ(lookUntil(390, is(licenses)), licenses) << "back on the about page";
  ASSERT_TRUE(click(60, 32));
  EXPECT_EQ(lookUntil(350, is(first)), first) << "back on the menu";
  ASSERT_TRUE(click(500, first + 5 * 64));
  const ExitStatus st = game->wait(10);
  EXPECT_TRUE(st.exited && st.code == 0) << st.code << " " << st.signal;
}

// A phone photo opened with the game, as a file manager opens it, its EXIF
// tag turning it a quarter, is a puzzle of the picture upright (a picture
// put in the pictures folder joined at start). Solved by demo it shows the
// finished picture; Continue leads to the menu, whose gallery holds the
// solve as a card that opens it again; a double click on the picture zooms
// in, and Continue leads back to the gallery.
TEST_F(GameBinary, APhotoOpenedWithTheGameIsAnUprightPuzzleKeptInTheGallery) {
  const std::string photo = logs.write("holiday.jpg", testsupport::quarteredJpeg(4000, 3000, 6));
  platform::fs::ensureDir(data.file("tessellatrix/pictures"));
  platform::fs::writeFile(data.file("tessellatrix/pictures/dog.jpg"), testsupport::quarteredJpeg(900, 600));
  auto game = startDrawing({"--size", "1000x700", photo}, {{"TESSELLATRIX_DEMO", "100"}});
  ASSERT_TRUE(xdotool("windowfocus --sync %1 sleep 0.3"));
  const auto click = [&](int x, int y, const char* how = "click 1") {
    return xdotool("mousemove --window %1 " + std::to_string(x) + " " + std::to_string(y) + " " + how + " sleep 0.3");
  };
  const auto solved = [](int seen) { return std::abs(seen - (700 - 84 + 16 + 26)) <= 2; };  // its one button
  const int kContinue = lookUntil(400, solved);
  ASSERT_TRUE(solved(kContinue)) << "the solved screen";
  const std::string id = store::pictureId(testsupport::readFile(photo));
  ASSERT_TRUE(waitFor([&] { return stored("saves.dat")["solves_list"][0]["imageId"].string == id; }));
  cairo_surface_t* kept = platform::loadImage(data.file("tessellatrix/imported/" + id + ".jpg"), 0, 0);
  ASSERT_NE(kept, nullptr);
  const uint32_t topLeft = *reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(kept));
  EXPECT_EQ(std::to_string(cairo_image_surface_get_width(kept)) + "x" +
                std::to_string(cairo_image_surface_get_height(kept)) + testsupport::quarterColour(topLeft),
            "1920x2560B") << "upright: the stored bottom left quarter is the top left one";
  cairo_surface_destroy(kept);
  js::Value index;
  ASSERT_TRUE(js::parseFile(data.file("tessellatrix/imported/index.json"), &index));
  EXPECT_EQ(index["pictures"][0]["name"].string + " " + index["pictures"][1]["name"].string, "dog holiday");
  ASSERT_TRUE(click(500, kContinue));
  const int first = lookUntil(400, [&](int seen) { return seen > 0 && seen != kContinue; });
  ASSERT_GT(first, 0) << "the menu";
  ASSERT_TRUE(click(500, first + 2 * 64));  // Gallery, third in the column
  ASSERT_EQ(lookUntil(400, [](int seen) { return seen == -1; }), -1) << "the gallery";
  ASSERT_TRUE(click(200, 200));  // the one card
  ASSERT_EQ(lookUntil(400, solved), kContinue) << "the solve again";
  const std::vector<uint32_t> fitted = testsupport::windowColumn(x.display(), "Quillmoss", 150);
  ASSERT_TRUE(click(300, 300, "click --repeat 2 --delay 80 1"));
  EXPECT_TRUE(waitFor([&] {
    const std::vector<uint32_t> now = testsupport::windowColumn(x.display(), "Quillmoss", 150);
    int changed = 0;
    for (size_t y = 0; y < now.size() && y < fitted.size(); ++y) changed += now[y] != fitted[y];
    return changed > 200;
  })) << "zoomed in";
  ASSERT_TRUE(click(500, kContinue));
  EXPECT_EQ(lookUntil(400, [](int seen) { return seen == -1; }), -1) << "back in the gallery";
  ASSERT_TRUE(xdotool("key ctrl+q"));
  EXPECT_TRUE(game->wait(10).exited);
}

// Three runs, each ended by another termination signal: the first asks for
// fullscreen and an unknown start screen, the second solves a whole puzzle
// by demo, the third starts plainly. Each ends normally and keeps what the
// runs before it stored.
TEST_F(GameBinary, EachTerminationSignalEndsARunNormallyWithItsChoicesStored) {
  struct Run {
    int sig;
    std::vector<std::string> args;
    Env env;
  };
  const Run kRuns[] = {{SIGTERM, {"--fullscreen"}, {{"TESSELLATRIX_SCREEN", "credits"}}},
                       {SIGINT, {}, {{"TESSELLATRIX_SCREEN", "playing"}, {"TESSELLATRIX_DEMO", "100"}}},
                       {SIGHUP, {}, {}}};
  for (const Run& run : kRuns) {
    auto game = startDrawing(run.args, run.env);
    const std::string out = game->out();
    EXPECT_TRUE(out.find(" (beschleunigt), VSync ") != std::string::npos ||
                out.find(" (Software!), VSync ") != std::string::npos)
        << out;
    game->signal(run.sig);
    const ExitStatus st = game->wait(15);
    EXPECT_TRUE(st.exited && st.code == 0) << run.sig;
    EXPECT_EQ(game->err().find("[storage]"), std::string::npos) << game->err();
    EXPECT_TRUE(stored("settings.dat")["fullscreen"].boolean) << "the choice stays without the option";
    if (run.sig == SIGTERM) {
      EXPECT_NE(game->err().find("TESSELLATRIX_SCREEN: menu levels playing gallery settings about licenses\n"),
                std::string::npos);
    }
  }
  EXPECT_FALSE(platform::fs::isFile(data.file("tessellatrix/settings.dat.neu")));
  const js::Value saves = stored("saves.dat");
  ASSERT_EQ(saves["solves_list"].size(), 1u) << "the demo's solve";
  const js::Value& solve = saves["solves_list"][0];
  EXPECT_EQ(solve["imageId"].string + " " + std::to_string(solve["rows"].asInt(0)) + "x" +
                std::to_string(solve["cols"].asInt(0)),
            "level1 6x7");
  EXPECT_FALSE(saves.has("current_puzzle")) << "a solved game is not kept";
}

TEST_F(GameBinary, ASecondSignalEndsItAtOnce) {
  auto game = startDrawing();
  // Both signals are pending when the process continues, so the second
  // handler call happens before the loop can see the first.
  for (int sig : {SIGSTOP, SIGTERM, SIGHUP, SIGCONT}) game->signal(sig);
  const ExitStatus st = game->wait(15);
  ASSERT_TRUE(st.exited);
  EXPECT_TRUE(st.code == 128 + SIGTERM || st.code == 128 + SIGHUP) << st.code;
}

// Two copies on one data folder would overwrite each other's saves: the
// second says so and ends at once, touching nothing. Without a display its
// message box cannot open, and the line on standard error remains.
TEST_F(GameBinary, ASecondCopyOnTheSameFolderEndsWithoutTouchingIt) {
  auto first = startDrawing({}, {{"TESSELLATRIX_SCREEN", "playing"}});
  const auto folder = [&] {
    std::string all;
    for (const std::string& name : platform::fs::listDir(data.file("tessellatrix"))) {
      all += name + testsupport::readFile(data.file("tessellatrix/" + name));
    }
    return all;
  };
  const std::string before = folder();
  auto second = start({}, {{"DISPLAY", std::nullopt}});
  const ExitStatus st = second->wait(15);
  EXPECT_TRUE(st.exited && st.code == 0) << st.code;
  EXPECT_EQ(second->err().find("[storage] " + data.file("tessellatrix") + " wird schon von einem anderen laufenden Spiel"),
            0u)
      << second->err();
  EXPECT_EQ(folder(), before);
  first->signal(SIGTERM);
  EXPECT_EQ(first->wait(15).code, 0);
}

TEST_F(GameBinary, ASegfaultLeavesACrashReportAndStillKills) {
  auto game = startDrawing({}, {{"TESSELLATRIX_SCREEN", "playing"}});
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

TEST_F(GameBinary, CommandLinesThatEndBeforeAWindow) {
  struct Case {
    std::vector<std::string> args;
    Env env;
    int code;
    std::string outStart, errPart;
  };
  const Case kCases[] = {
      {{"--version", "--help"}, {{"DISPLAY", std::nullopt}}, 0, "Quillmoss's Puzzle 1.1.0 (Build 1000)\n", ""},
      {{"--fullscreen", "--help"}, {{"DISPLAY", std::nullopt}}, 0,
       "Quillmoss's Puzzle 1.1.0\n  --version    Version ausgeben\n", ""},
      {{}, {{"DISPLAY", std::nullopt}}, 1, "", "SDL_Init: "},
  };
  for (const Case& c : kCases) {
    auto game = start(c.args, c.env);
    const ExitStatus st = game->wait(15);
    EXPECT_TRUE(st.exited && st.code == c.code) << st.code;
    EXPECT_EQ(game->out().rfind(c.outStart, 0), 0u) << game->out();
    EXPECT_NE(game->err().find(c.errPart), std::string::npos) << game->err();
  }
}

// A fresh player goes from the menu to the level select, every puzzle solved by demo the moment
// it starts: locked level 2 only explains itself; level 1's first chip
// starts play and its solve is recorded; back on the level select, level 2
// has opened and its chip starts play too. (1280 x 800: three columns of
// cards 404 wide, the first chip row 351 to 381 from the window's top.)
TEST_F(GameBinary, ALevelSolvedOnTheLevelSelectOpensTheNextOne) {
  auto game = startDrawing({"--size", "1280x800"}, {{"TESSELLATRIX_SCREEN", "menu"}, {"TESSELLATRIX_DEMO", "100"}});
  const auto solved = [&] {
    const js::Value saves = stored("saves.dat");
    const js::Value& list = saves["solves_list"];
    std::string all;
    for (size_t i = list.size(); i-- > 0;) {
      all += list[i]["imageId"].string + " " + std::to_string(list[i]["rows"].asInt(0)) + "x" +
             std::to_string(list[i]["cols"].asInt(0)) + ";";
    }
    return all;
  };
  ASSERT_TRUE(xdotool("windowfocus --sync %1"));
  const int chooseLevel = lookUntil(500, [](int seen) { return seen > 0; });
  ASSERT_GT(chooseLevel, 0) << "the menu";
  ASSERT_TRUE(xdotool("mousemove --window %1 640 " + std::to_string(chooseLevel) + " sleep 0.3 click 1 sleep 1"));
  ASSERT_TRUE(xdotool("mousemove --window %1 508 366 sleep 0.3 click 1 sleep 1 key Escape sleep 0.3"));
  ASSERT_TRUE(xdotool("mousemove --window %1 90 366 sleep 0.3 click 1"));
  EXPECT_TRUE(waitFor([&] { return solved() == "level1 5x6;"; })) << solved();
  ASSERT_TRUE(xdotool("sleep 3 key Escape sleep 1 mousemove --window %1 508 366 sleep 0.3 click 1"));
  EXPECT_TRUE(waitFor([&] { return solved() == "level1 5x6;level2 5x6;"; })) << solved();
  game->signal(SIGTERM);
  EXPECT_EQ(game->wait(15).code, 0);
}

// A player without a mouse, who asked for stillness: the splash, the menu
// (two looks a second apart the same), the level select, level 1 at 5 x 6
// solved piece by piece with the keys, the solved screen and the gallery.
// Each piece Tab picks is laid on the cursor's cell, where the saved game
// tells the test which piece it is (the game shows nothing of that); it is
// picked again (the one on the table is the last in the order) and laid home.
TEST_F(GameBinary, APlayerWithTheKeysAloneSolvesAPuzzleAndFindsItInTheGallery) {
  platform::fs::ensureDir(data.file("tessellatrix"));
  platform::fs::writeFile(data.file("tessellatrix/settings.dat"), platform::saveEncrypt("{\"reducedMotion\":true}"));
  auto game = startDrawing({"--size", "1000x700"});
  ASSERT_TRUE(xdotool("windowfocus --sync %1 sleep 0.5 key space sleep 1"));
  const auto look = [&] {  // every 25th column of the window
    std::vector<std::vector<uint32_t>> all;
    for (int x0 = 0; x0 < 1000; x0 += 25) all.push_back(testsupport::windowColumn(x.display(), "Quillmoss", x0));
    return all;
  };
  const auto menu = look();
  ASSERT_TRUE(xdotool("sleep 1"));
  EXPECT_TRUE(look() == menu) << "nothing moved on the menu";
  ASSERT_TRUE(xdotool("key Tab sleep 0.2 key Return sleep 0.5 key Tab sleep 0.2 key Tab sleep 0.2 key Return"));
  // The pieces of the saved game neither home nor in a strip (-1 when none), and how many are home.
  const auto piecesOf = [&](std::string* loose) {
    const js::Value all = stored("saves.dat")["current_puzzle"]["pieces"];
    int home = all.size() == 30u ? 0 : -1;
    for (size_t i = 0; i < all.size(); ++i) {
      home += all[i]["placed"].boolean;
      if (!all[i]["placed"].boolean && !all[i]["inTray"].boolean) *loose = all[i]["id"].string;
    }
    return home;
  };
  std::string loose;
  ASSERT_TRUE(waitFor([&] { return piecesOf(&loose) == 0; })) << "level 1 at 5 x 6";
  int row = 0, col = 0;  // where the cursor is
  for (int home = 0, round = 0; home >= 0 && round < 60; ++round) {
    ASSERT_TRUE(xdotool("key Tab sleep 0.2 key Return"));
    ASSERT_TRUE(waitFor([&] {
      loose.clear();
      return piecesOf(&loose) != home || !loose.empty();
    }));
    if (!loose.empty()) {
      std::string walk = "key shift+Tab sleep 0.2 key --delay 80";
      for (const int r = std::stoi(loose); row != r; row += r > row ? 1 : -1) walk += r > row ? " Down" : " Up";
      for (const int c = std::stoi(loose.substr(loose.find('_') + 1)); col != c; col += c > col ? 1 : -1) {
        walk += c > col ? " Right" : " Left";
      }
      ASSERT_TRUE(xdotool(walk + " Return"));
      ASSERT_TRUE(waitFor([&] { return piecesOf(&(loose = "")) != home; })) << loose;
    }
    home = piecesOf(&loose);
  }
  const auto solved = [](int seen) { return std::abs(seen - (700 - 84 + 16 + 26)) <= 2; };
  ASSERT_TRUE(solved(lookUntil(400, solved))) << "the solved screen";
  // Continue, back to the menu, its third button (the gallery), the one card.
  ASSERT_TRUE(xdotool("key Tab sleep 0.2 key Tab sleep 0.2 key Return sleep 0.5 key Escape sleep 0.5 key Tab sleep 0.2 "
                      "key Tab sleep 0.2 key Tab sleep 0.2 key Return sleep 0.5 key Tab sleep 0.2 key Tab sleep 0.2"));
  ASSERT_EQ(lookUntil(400, [](int seen) { return seen == -1; }), -1) << "the gallery";
  ASSERT_TRUE(xdotool("key Return"));
  EXPECT_TRUE(solved(lookUntil(400, solved))) << "the solve again";
  EXPECT_EQ(stored("saves.dat")["solves_list"].size(), 1u);
  ASSERT_TRUE(xdotool("key ctrl+q"));
  EXPECT_TRUE(game->wait(10).exited);
}

}  // namespace

// The settings page at 1280 x 800 as a player uses it: the tray and quarter
// turns are chosen, and the next puzzle is dealt into the tray with pieces
// turned by quarters; the language goes to Hebrew (the last of the list,
// scrolled to) and back to the system entry at its head, the page mirrored
// in between. A last start reads the choices and writes them back unchanged.
TEST_F(GameBinary, SettingsChosenOnThePageShapeTheNextPuzzleAndOutliveARestart) {
  const Env settingsFirst = {{"TESSELLATRIX_SCREEN", "settings"}};
  const std::vector<std::string> size = {"--size", "1280x800"};
  auto game = startDrawing(size, {{"TESSELLATRIX_SCREEN", "menu"}});
  ASSERT_TRUE(xdotool("windowfocus --sync %1"));
  const int first = lookUntil(500, [](int seen) { return seen > 0; });
  ASSERT_GT(first, 0) << "the menu";
  ASSERT_TRUE(xdotool("mousemove --window %1 640 " + std::to_string(first + 3 * 64) + " click 1 sleep 1"));  // Settings
  // The page column runs from x 260 to 1020: "Tray grid" and "4 directions".
  ASSERT_TRUE(xdotool("mousemove --window %1 640 212 click 1 sleep 0.3 mousemove --window %1 896 380 click 1 "
                      "sleep 0.3 key ctrl+q"));
  EXPECT_EQ(game->wait(10).code, 0);
  const js::Value chosen = stored("settings.dat");
  EXPECT_EQ(chosen["boardLayout"].string + " " + chosen["rotationMode"].string, "tray 90");

  game = startDrawing(size, {{"TESSELLATRIX_SCREEN", "playing"}});
  ASSERT_TRUE(xdotool("windowfocus --sync %1 sleep 0.5 key ctrl+q"));
  EXPECT_EQ(game->wait(10).code, 0);
  const js::Value saves = stored("saves.dat");
  const js::Value& pieces = saves["current_puzzle"]["pieces"];
  // Dealt into the tray grid's columns, not scattered; some turned a quarter.
  std::set<int> across;
  int quarter = 0;
  for (size_t i = 0; i < pieces.size(); ++i) {
    across.insert(pieces[i]["x"].asInt(0));
    quarter += pieces[i]["rotation"].asInt(0) % 180 == 90;
  }
  EXPECT_TRUE(pieces.size() == 42u && across.size() < 14 && quarter > 0) << across.size() << " columns, " << quarter;

  // Near the foot of the page the language button is at the left, and in
  // Hebrew at the right; the list's last entry is Hebrew, its first the system.
  game = startDrawing(size, settingsFirst);
  ASSERT_TRUE(xdotool("windowfocus --sync %1 mousemove --window %1 640 400 click --repeat 15 5 sleep 0.3 "
                      "mousemove --window %1 370 490 click 1 sleep 0.3 "
                      "mousemove --window %1 633 400 click --repeat 10 5 sleep 0.3 "
                      "mousemove --window %1 633 672 click 1 sleep 0.5"));
  EXPECT_TRUE(waitFor([&] { return stored("settings.dat")["language"].string == "he"; }));
  ASSERT_TRUE(xdotool("mousemove --window %1 910 490 click 1 sleep 0.3 mousemove --window %1 633 116 click 1 "
                      "sleep 0.3 key ctrl+q"));
  EXPECT_EQ(game->wait(10).code, 0);

  game = startDrawing(size, settingsFirst);
  ASSERT_TRUE(xdotool("key ctrl+q"));
  EXPECT_EQ(game->wait(10).code, 0);
  const js::Value kept = stored("settings.dat");
  EXPECT_EQ(kept["boardLayout"].string + " " + kept["rotationMode"].string + " [" + kept["language"].string + "]",
            "tray 90 []");
}
