#include "core/level_progress.h"

#include <string>

namespace core {

int difficultyOfGrid(int rows, int cols) {
  for (const DifficultyDef& d : difficulties()) {
    if (d.rows == rows && d.cols == cols) return d.index;
  }
  return -1;
}

std::vector<LevelProgress> levelProgress(const std::vector<store::SolveEntry>& solves,
                                         const store::SavedPuzzle& saved) {
  std::set<std::string> solvedIds;
  for (const store::SolveEntry& e : solves) solvedIds.insert(e.imageId);
  const int lastDifficulty = static_cast<int>(difficulties().size()) - 1;

  std::vector<LevelProgress> out;
  out.reserve(levels().size() + pictureLevels().size());
  for (const std::vector<Level>* list : {&levels(), &pictureLevels()}) {
    for (const Level& level : *list) {
      LevelProgress p;
      p.level = &level;
      p.locked = !level.own && !out.empty() && solvedIds.count(out.back().level->id) == 0;
      p.inProgress = saved.valid && saved.imageId == level.id;
      if (p.inProgress) p.savedDifficulty = difficultyOfGrid(saved.rows, saved.cols);
      for (const store::SolveEntry& e : solves) {
        const int d = e.imageId == level.id ? difficultyOfGrid(e.rows, e.cols) : -1;
        if (d >= 0) p.solved.insert(d);
      }
      const int highest = p.solved.empty() ? -1 : *p.solved.rbegin();
      p.suggested = highest < lastDifficulty ? highest + 1 : -1;
      out.push_back(std::move(p));
    }
  }
  return out;
}

}  // namespace core
