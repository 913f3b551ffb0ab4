// Two copies of the game on one data folder, killed at random moments while
// they save: the saves file must survive every kill.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "platform/fs.h"
#include "platform/paths.h"
#include "platform/seal.h"
#include "store/store.h"

namespace {

// What the game does from its start on: claim the folder (or leave at once),
// then save a puzzle after every move, without end.
pid_t startWriter() {
  const pid_t pid = ::fork();
  if (pid != 0) return pid;
  if (!store::claimDataDir()) _exit(0);
  store::SavedPuzzle puzzle;
  puzzle.imageId = "level1";
  puzzle.rows = 5;
  puzzle.cols = 6;
  puzzle.pieces.resize(30);
  for (double x = 0;; x += 1) {
    puzzle.pieces[0].x = x;
    store::savePuzzle(puzzle);
  }
}

TEST(DataFolderLock, NoKillOfTwoWritersLosesTheSaves) {
  const std::string saves = paths::dataDir() + "/saves.dat";
  std::mt19937 random(7);
  pid_t writers[2] = {startWriter(), startWriter()};
  int kills = 0, lost = 0;
  bool seen = false;
  for (; kills < 200; ++kills) {
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 6000));
    pid_t& victim = writers[random() % 2];
    ::kill(victim, SIGKILL);
    ::waitpid(victim, nullptr, 0);
    std::string sealed;
    const bool ok = platform::fs::readFile(saves, &sealed) && platform::saveDecrypt(sealed, nullptr) ==
                                                                  platform::SealResult::Ok;
    seen = seen || ok;
    if (seen && !ok) ++lost;
    if (!ok && platform::fs::isFile(saves + ".manipuliert")) break;  // nothing left to lose
    victim = startWriter();
  }
  for (pid_t pid : writers) {
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
  }
  EXPECT_TRUE(seen);
  EXPECT_EQ(lost, 0) << "in " << kills << " kills";
  EXPECT_FALSE(platform::fs::isFile(saves + ".manipuliert"));
}

}  // namespace
