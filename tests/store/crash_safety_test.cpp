// A game killed while it saves must find its saves file whole on the next
// start: a child process saves in a tight loop and is killed with SIGKILL at
// random moments, and after every kill the file must open and hold either
// the last save the child finished or the one it was in the middle of.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "store/saves_json.h"
#include "store/sealed_file.h"
#include "store/store.h"
#include "tests/store/sealed_helpers.h"

namespace {

constexpr int kKills = 250;
constexpr int kPieces = 110;

// Runs in the child: continues from whatever the file holds, counting the
// play time up by one per save and reporting each finished save.
[[noreturn]] void saveForever(int reportFd) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  store::init();
  store::SavedPuzzle p = store::currentPuzzle();
  for (int i = 0; i < 1000000; ++i) {
    ++p.elapsedMs;
    store::savePuzzle(p);
    const int64_t done = p.elapsedMs;
    if (::write(reportFd, &done, sizeof done) != sizeof done) break;
  }
  _exit(0);
}

// Starts a saving child, kills it after `delay`, and returns the last save
// it reported as finished (or `from` if none).
int64_t killOneSaver(std::chrono::microseconds delay, int64_t from) {
  int fds[2];
  if (::pipe(fds) != 0) return -1;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(fds[0]);
    saveForever(fds[1]);
  }
  ::close(fds[1]);
  std::this_thread::sleep_for(delay);
  ::kill(pid, SIGKILL);
  int status = 0;
  ::waitpid(pid, &status, 0);
  int64_t last = from, v;
  while (::read(fds[0], &v, sizeof v) == sizeof v) last = v;
  ::close(fds[0]);
  return last;
}

TEST(CrashSafety, TheSavesFileIsWholeAfterEveryKill) {
  const std::string path = storetest::dataFile("saves.dat");
  store::SavedPuzzle start;
  start.valid = true;
  start.imageId = "level5";
  start.rows = 10;
  start.cols = 11;
  for (int i = 0; i < kPieces; ++i) start.pieces.push_back({"r" + std::to_string(i), i * 3.25, i * 0.5, false, 1, true});
  // Written directly: this process keeps the store's state untouched, so
  // every child reads the file afresh.
  store::writeSealed(path, store::savesToJson(start, {}));

  const unsigned seed = std::random_device()();
  std::mt19937 rng(seed);
  // Saves cost a few milliseconds (two fsyncs each), so most kills land
  // inside one and some between two.
  std::uniform_int_distribution<int> delayUs(0, 15000);
  int64_t onDisk = 0;
  int midWrite = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    const int64_t reported = killOneSaver(std::chrono::microseconds(delayUs(rng)), onDisk);
    ASSERT_GE(reported, onDisk) << "seed " << seed;
    if (platform::fs::isFile(path + ".neu")) ++midWrite;
    const js::Value doc = storetest::openSealed(path);
    ASSERT_TRUE(doc.isObject()) << "kill " << kill << ", seed " << seed;
    const js::Value& cur = doc["current_puzzle"];
    ASSERT_EQ(cur["pieces"].size(), static_cast<size_t>(kPieces)) << "kill " << kill;
    const int64_t found = cur["elapsedMs"].asInt64(-1);
    ASSERT_TRUE(found == reported || found == reported + 1)
        << "kill " << kill << ": file holds " << found << ", last finished save " << reported << ", seed " << seed;
    onDisk = found;
  }
  EXPECT_FALSE(platform::fs::isFile(path + ".manipuliert"));
  EXPECT_GE(onDisk, 20) << "the children hardly ever finished a save";
  std::printf("%d kills, %lld saves, %d kills left a partial \".neu\"\n", kKills, static_cast<long long>(onDisk),
              midWrite);
}

}  // namespace
