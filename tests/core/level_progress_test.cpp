// What the level select shows of the player's progress, from the solve
// history and the saved puzzle alone.
#include "core/level_progress.h"

#include <gtest/gtest.h>

namespace {

store::SolveEntry solve(const char* level, int difficulty) {
  const core::DifficultyDef& d = core::difficulties()[difficulty];
  return store::SolveEntry{"", level, d.rows, d.cols, 0, 0};
}

// 'L' for each locked level of the first six, '.' for an open one.
std::string locks(const std::vector<store::SolveEntry>& solves) {
  std::string out;
  for (int i = 0; i < 6; ++i) out += core::levelProgress(solves, store::SavedPuzzle())[i].locked ? 'L' : '.';
  return out;
}

// A level opens once the one before it is solved at any difficulty, and
// opens nothing further: the first level is open even with no history.
TEST(LevelProgress, EachSolvedLevelOpensTheNextOneOnly) {
  EXPECT_EQ(locks({}), ".LLLLL");
  for (int d = 0; d < 6; ++d) EXPECT_EQ(locks({solve("level3", d)}), ".LL.LL") << "difficulty " << d;
  EXPECT_EQ(locks({solve("level1", 5), solve("level4", 0), solve("level40", 2)}), "..LL.L");
}

// The suggestion is the step above the hardest solved difficulty, none
// once the hardest of all is solved; the saved puzzle marks its level and
// difficulty, whatever else is solved.
TEST(LevelProgress, SuggestsTheNextHarderDifficultyAndMarksTheSavedOne) {
  const std::pair<std::set<int>, int> kCases[] = {{{}, 0}, {{0}, 1}, {{3, 1}, 4}, {{5}, -1}, {{0, 1, 2, 3, 4, 5}, -1}};
  store::SavedPuzzle saved;
  saved.valid = true, saved.imageId = "level2", saved.rows = 7, saved.cols = 8;
  for (const auto& [solved, suggested] : kCases) {
    std::vector<store::SolveEntry> solves = {solve("level1", 4)};
    for (int d : solved) solves.push_back(solve("level2", d));
    const std::vector<core::LevelProgress> p = core::levelProgress(solves, saved);
    EXPECT_EQ(p[1].suggested, suggested) << testing::PrintToString(solved);
    EXPECT_EQ(p[1].solved, solved);
    EXPECT_TRUE(p[1].inProgress && p[1].savedDifficulty == 2 && !p[0].inProgress && p[0].savedDifficulty == -1);
  }
}

}  // namespace
