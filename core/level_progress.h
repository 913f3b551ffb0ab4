// How far the player has come with each level: which levels are open, which
// difficulties are solved, which one is in progress and which one to try
// next. Worked out from the solve history and the saved puzzle alone, so
// every screen that shows it agrees.
#pragma once

#include <set>
#include <vector>

#include "core/catalog.h"
#include "store/records.h"

namespace core {

struct LevelProgress {
  const Level* level = nullptr;
  bool locked = false;
  bool inProgress = false;  // the saved puzzle is of this level
  int savedDifficulty = -1;  // the saved puzzle's difficulty index; -1 none
  std::set<int> solved;      // difficulty indices solved at least once
  int suggested = -1;        // the next difficulty to try; -1 when the last one is solved
};

// The difficulty index of a grid, or -1 for a grid no difficulty has.
int difficultyOfGrid(int rows, int cols);

// One entry per catalogue level, in catalogue order, then one per picture of
// the player's own. The first level is always open; each later one opens
// once the level before it is solved at any difficulty. The player's own
// pictures are always open.
std::vector<LevelProgress> levelProgress(const std::vector<store::SolveEntry>& solves,
                                         const store::SavedPuzzle& saved);

}  // namespace core
