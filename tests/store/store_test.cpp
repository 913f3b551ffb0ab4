// The settings and saves files as the player meets them. ctest runs each test in
// its own process with its own data folder: each starts with a store that has read nothing.
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <regex>
#include <thread>

#include "platform/fs.h"
#include "platform/paths.h"
#include "js/json.h"
#include "platform/seal.h"
#include "store/saves_json.h"
#include "store/sealed_file.h"
#include "store/settings_json.h"
#include "store/store.h"
#include "tests/support/test_support.h"

// The store's calls to fsync and rename, in order, while g_watch is set:
// these stand-ins take them before the C library does.
static std::string g_diskCalls;
static bool g_watch = false;
extern "C" int fsync(int fd) {
  if (g_watch) g_diskCalls += "fsync ";
  return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fsync"))(fd);
}
extern "C" int rename(const char* from, const char* to) noexcept {
  if (g_watch) g_diskCalls += "rename ";
  return reinterpret_cast<int (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "rename"))(from, to);
}

namespace {

using testsupport::readFile;

std::string dataFile(const std::string& name) { return paths::dataDir() + "/" + name; }
js::Value openSealed(const std::string& name) { return js::parse(store::readSealed(dataFile(name))); }

TEST(Store, DamagedSettingsAreSetAsideAndTheDefaultsUsed) {
  const std::string path = dataFile("settings.dat");
  const std::string good = platform::saveEncrypt("{\"soundOn\":false}");
  const auto flip = [&](size_t i) { return good.substr(0, i) + char(good[i] ^ 0x20) + good.substr(i + 1); };
  // Sealed once and kept: if it is set aside, the key has changed and every
  // player's settings and saves would be.
  std::string kept;
  for (const char* h = "54534c580127c9637422198ade9b368b08a02ab023fd494171adc998e395de5a5df7e3ed79314b37799de9505829"
                       "51eefda3176ffd3f72d0012fcd2cd08bf95a"; *h; h += 2) {
    kept += static_cast<char>(std::stoi(std::string(h, 2), nullptr, 16));
  }
  struct Case { const char* what; std::string bytes; bool setAside; };
  const Case kCases[] = {
      {"zero bytes", "", false},  {"sealed empty text", platform::saveEncrypt(""), false},
      {"sealed by an earlier build", kept, false}, {"plain JSON", "{\"soundOn\":false}", true},
      {"version", flip(4), true}, {"nonce", flip(10), true}, {"tag", flip(40), true}, {"text", flip(50), true},
      {"cut short", good.substr(0, 44), true}, {"a byte more", good + "x", true},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    platform::fs::writeFile(path, c.bytes);
    store::settings().soundOn = true;
    testing::internal::CaptureStderr();
    store::loadSettings();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              c.setAside ? "[storage] " + path + " war nicht lesbar \xE2\x80\x94 beiseitegelegt\n" : "");
    EXPECT_TRUE(store::settings().soundOn);
    EXPECT_EQ(platform::fs::isFile(path), !c.setAside);
    // The newest damaged file replaces an older one set aside.
    EXPECT_EQ(readFile(path + ".manipuliert"), c.setAside ? c.bytes : "");
  }
}

// What the game does from its start on: claim the folder (or leave at once),
// then go on from whatever the saves file holds, one millisecond of play more
// per save, telling the test through `done` of every save it finished.
pid_t startSaver(int done) {
  const pid_t pid = ::fork();
  if (pid != 0) return pid;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (!store::claimDataDir()) _exit(0);
  store::SavedPuzzle p = store::currentPuzzle();
  do {
    ++p.elapsedMs;
    store::savePuzzle(p);
  } while (::write(done, &p.elapsedMs, sizeof p.elapsedMs) == sizeof p.elapsedMs);
  _exit(0);
}

// One copy of the game, then two on one folder, killed at random moments
// while they save. After every kill the file is whole and holds at least the
// last save finished; with one copy at most the one under way besides. Two
// copies writing at once would tear the file or send the count back.
TEST(CrashSafety, NoSaveIsLostWhenTheGameIsKilledWhileSaving) {
  store::SavedPuzzle start{true, "level5", 10, 11, 0, 0, 0, 0, true, {}, 0, 0, store::RotationMode::Off};
  for (int i = 0; i < 110; ++i) start.pieces.push_back({"r" + std::to_string(i), i * 3.25, i * 0.5, false, 1, true});
  // Written past the store, so this process has read nothing and every child reads the file afresh.
  store::writeSealed(dataFile("saves.dat"), store::savesToJson(start, {}));
  const unsigned seed = std::random_device()();
  std::mt19937 rng(seed);
  int done[2];
  ASSERT_EQ(::pipe(done), 0);
  ::fcntl(done[0], F_SETFL, O_NONBLOCK);
  int64_t finished = 0, onDisk = 0;
  for (const int copies : {1, 2}) {
    std::vector<pid_t> savers;
    while (savers.size() < size_t(copies)) savers.push_back(startSaver(done[1]));
    const int64_t first = onDisk;
    for (int kill = 0; kill < 200; ++kill) {
      SCOPED_TRACE(testing::Message() << copies << " copies, kill " << kill << ", seed " << seed);
      // A save takes a few milliseconds (two fsyncs), so most kills land inside one.
      std::this_thread::sleep_for(std::chrono::microseconds(rng() % 15000));
      pid_t& victim = savers[rng() % copies];
      ::kill(victim, SIGKILL);
      ::waitpid(victim, nullptr, 0);
      for (int64_t v; ::read(done[0], &v, sizeof v) == sizeof v;) finished = std::max(finished, v);
      const js::Value current = openSealed("saves.dat")["current_puzzle"];  // empty unless whole
      ASSERT_EQ(current["pieces"].size(), 110u);
      onDisk = current["elapsedMs"].asInt64(-1);
      ASSERT_TRUE(onDisk >= finished && (copies == 2 || onDisk <= finished + 1))
          << "file " << onDisk << ", finished " << finished;
      finished = onDisk;  // whole on disk, so finished too
      victim = startSaver(done[1]);
    }
    for (pid_t pid : savers) {
      ::kill(pid, SIGKILL);
      ::waitpid(pid, nullptr, 0);
    }
    EXPECT_GE(onDisk - first, 20) << "the children hardly ever finished a save";
  }
}

TEST(CrashSafety, ASaveReachesTheDiskBeforeItReplacesTheLastOne) {
  const std::string path = dataFile("saves.dat");
  g_watch = true;
  store::savePuzzle(store::SavedPuzzle());
  g_watch = false;
  // The new file is synced before the rename publishes it, the folder after
  // it so that the rename itself survives a power cut.
  EXPECT_EQ(g_diskCalls, "fsync rename fsync ");
  const std::string before = readFile(path);
  // The file-size limit fails writes as a full disk does; this save fits the
  // write buffer, so only the final flush can notice.
  ::signal(SIGXFSZ, SIG_IGN);
  rlimit old{};
  ::getrlimit(RLIMIT_FSIZE, &old);
  const rlimit tight{before.size() + 100, old.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &tight);
  store::recordSolve(std::string(1000, 'x'), 5, 6, 1000);
  ::setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_EQ(readFile(path), before);
}

TEST(Store, EverySettingSurvivesALoadAndASave) {
  // A file as earlier versions wrote it, every value away from its default.
  const std::string file =
      "{\"bgColor\":\"#000001\",\"boardColor\":\"#ffffff\",\"boardLayout\":\"tray\",\"boardZoomMode\":\"pinch\","
      "\"difficulty\":\"grandmaster\",\"fullscreen\":true,\"gridColor\":\"#000000\",\"hideConnectedBorder\":true,"
      "\"interfaceScale\":150,\"language\":\"ar\",\"maximized\":true,\"musicVolume\":0.5,\"reducedMotion\":true,"
      "\"rotationMode\":\"90\",\"sfxVolume\":1,\"showSecondRow\":false,\"soundOn\":false,\"strongOutlines\":true,"
      "\"trayBgColor\":\"#102030\",\"trayBorderColor\":\"#abcdef\","
      "\"windowH\":1080,\"windowW\":1920,\"windowX\":-3000,\"windowY\":40}";
  store::writeSealed(dataFile("settings.dat"), js::parse(file));
  store::saveSettings();
  EXPECT_EQ(openSealed("settings.dat").dump(), file);
}

TEST(Store, TheSavesFileKeepsThePuzzleAndTheNewest200Solves) {
  store::writeSealed(dataFile("saves.dat"), js::parse("{\"solves_list\":[{\"id\":\"1_0\",\"imageId\":\"level0\"}]}"));
  // No init first: the first save must read the file, not write over it.
  for (int i = 1; i <= 199; ++i) store::recordSolve("level" + std::to_string(i), 5, 6, i);
  EXPECT_EQ(store::solves().back().imageId, "level0");
  store::recordSolve("level200", 5, 6, 200);
  store::SavedPuzzle p{false, "level7", 10, 11, 1200.5, 800, 40, -12.25, false, {}, 123456, 0,
                       store::RotationMode::Rot180};
  for (int i = 0; i < 110; ++i) p.pieces.push_back({"p" + std::to_string(i), i * 1.5, -i * 0.25, i < 9, i % 4, i > 9});
  store::savePuzzle(p);
  store::SavedPuzzle back;
  std::vector<store::SolveEntry> solves;
  store::savesFromJson(openSealed("saves.dat"), &back, &solves);
  EXPECT_EQ(store::savesToJson(back, solves).dump(),
            store::savesToJson(store::currentPuzzle(), store::solves()).dump());
  ASSERT_EQ(solves.size(), 200u);
  EXPECT_EQ(solves.front().imageId + " " + solves.back().imageId, "level200 level1") << "newest first";
  store::clearPuzzle();
  EXPECT_FALSE(openSealed("saves.dat").has("current_puzzle"));
}

#define EXPECT_WITHIN(v, lo, hi) EXPECT_TRUE((v) >= (lo) && (v) <= (hi)) << #v << " = " << (v) << " from " << n

TEST(Store, EveryNumberOfTheFilesLandsInItsRange) {
  for (const std::string n : {"1e400", "-1e400", "9.3e18", "-9.3e18", "1e300", "4e9", "-4e9"}) {
    // The document with every N replaced by the number.
    const auto withNumber = [&](const char* doc) { return js::parse(std::regex_replace(doc, std::regex("N"), n)); };
    store::SavedPuzzle p;
    std::vector<store::SolveEntry> solves;
    store::savesFromJson(withNumber(R"({"current_puzzle":{"imageId":"l","rows":N,"cols":N,"boardW":N,"boardH":N,
        "boardX":N,"boardY":N,"elapsedMs":N,"savedAt":N,"pieces":[{"x":N,"y":N,"rotation":N}]},
        "solves_list":[{"rows":N,"cols":N,"elapsedMs":N,"solvedAt":N}]})"), &p, &solves);
    ASSERT_TRUE(p.pieces.size() == 1 && solves.size() == 1) << n;
    const store::SolveEntry& e = solves[0];
    EXPECT_WITHIN(p.elapsedMs, 0, store::kMaxPlayMs);
    EXPECT_WITHIN(e.elapsedMs, 0, store::kMaxPlayMs);
    for (int64_t stamp : {p.savedAt, e.solvedAt}) EXPECT_WITHIN(stamp, -store::kMaxStampMs, store::kMaxStampMs);
    for (int side : {p.rows, p.cols, e.rows, e.cols}) EXPECT_WITHIN(side, 0, store::kMaxGridSide);
    for (double c : {p.boardW, p.boardH, p.boardX, p.boardY, p.pieces[0].x, p.pieces[0].y}) {
      EXPECT_WITHIN(c, -store::kMaxCoordinate, store::kMaxCoordinate);
    }
    EXPECT_WITHIN(p.pieces[0].rotation, -360, 360);
    store::Settings s;
    store::settingsFromJson(withNumber(R"({"windowW":N,"windowH":N,"windowX":N,"windowY":N,"interfaceScale":N})"), &s);
    for (int v : {s.windowW, s.windowH, s.windowX, s.windowY}) EXPECT_WITHIN(v, -1e6, 1e6);
    EXPECT_EQ(s.interfaceScale, n[0] == '-' ? 100 : 200) << n;
  }
  // An interface size between those offered becomes the nearest one.
  for (const auto& [size, read] : {std::pair{"130", 125}, {"140", 150}, {"175", 150}, {"181", 200}, {"99.9", 100}}) {
    store::Settings s;
    store::settingsFromJson(js::parse(std::string("{\"interfaceScale\":") + size + "}"), &s);
    EXPECT_EQ(s.interfaceScale, read) << size;
  }
}

}  // namespace
