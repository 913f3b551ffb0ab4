// Two copies of the game on one data folder, killed at random moments while
// they save: the saves file must survive every kill.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <thread>

#include "platform/fs.h"
#include "platform/paths.h"
#include "platform/seal.h"
#include "store/store.h"

namespace {

// What the game does from its start on: claim the folder (or leave at once),
// then save after every move, without end.
pid_t startWriter() {
  const pid_t pid = ::fork();
  if (pid != 0) return pid;
  if (!store::claimDataDir()) _exit(0);
  store::SavedPuzzle puzzle;
  puzzle.imageId = "level1";
  puzzle.pieces.resize(30);
  for (;; puzzle.pieces[0].x += 1) store::savePuzzle(puzzle);
}

TEST(DataFolderLock, NoKillOfTwoWritersLosesTheSaves) {
  const std::string saves = paths::dataDir() + "/saves.dat";
  std::mt19937 random(7);
  pid_t writers[2] = {startWriter(), startWriter()};
  int kills = 0, lost = 0, good = 0;
  for (; kills < 200 && !platform::fs::isFile(saves + ".manipuliert"); ++kills) {
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 6000));
    pid_t& victim = writers[random() % 2];
    ::kill(victim, SIGKILL);
    ::waitpid(victim, nullptr, 0);
    std::string sealed;
    const bool ok = platform::fs::readFile(saves, &sealed) &&
                    platform::saveDecrypt(sealed, nullptr) == platform::SealResult::Ok;
    good += ok;
    lost += good > 0 && !ok;
    victim = startWriter();
  }
  for (pid_t pid : writers) {
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
  }
  EXPECT_GT(good, 0);
  EXPECT_EQ(lost, 0) << "in " << kills << " kills";
  EXPECT_EQ(kills, 200) << "the saves were set aside as damaged";
}

}  // namespace
