#include "core/catalog.h"

#include <cstdlib>
#include <utility>

#include "platform/paths.h"

namespace core {

namespace {

struct LevelRow {
  const char* id;
  const char* source;
  int32_t width;
  int32_t height;
};

// The pictures in assets/levels are cut to exactly these sizes: the board
// takes its aspect ratio from here, not from the file.
constexpr LevelRow kLevelRows[] = {
    {"level1", "DSC0250", 2500, 1667},
    {"level2", "IMG 6617", 2500, 1665},
    {"level3", "DSC02768", 2500, 1670},
    {"level4", "DSC02790", 2500, 1670},
    {"level5", "P1010249", 2500, 1669},
    {"level6", "P1000486", 2500, 1669},
    {"level7", "DSC00755 2 2", 2500, 1670},
    {"level8", "IMG 3907", 2500, 1667},
    {"level9", "IMG 3958", 2500, 1667},
    {"level10", "IMG 2235", 2500, 1665},
    {"level11", "Thumb IMG 7988 1024", 1024, 683},
    {"level12", "IMG 0605", 2500, 1875},
    {"level13", "P1002190", 2500, 1877},
    {"level14", "P1001921", 2500, 1877},
    {"level15", "Thumb IMG 2844 1024", 1024, 683},
    {"level16", "DSC7974", 2500, 1670},
    {"level17", "Thumb IMG 2997 1024", 1024, 683},
    {"level18", "Thumb IMG 2848 1024", 1024, 683},
    {"level19", "IMG 9701", 2500, 1667},
    {"level20", "IMG 9611", 2500, 1665},
    {"level21", "P1001726", 2500, 1877},
    {"level22", "DSC00504", 2500, 1731},
    {"level23", "P1001511", 2500, 1877},
    {"level24", "DSC7937 Verbessert RR", 2500, 1663},
    {"level25", "Sonnenblume", 2000, 2500},  // the one portrait picture
    {"level26", "Thumb P8110623 1024", 1024, 768},
    {"level27", "Thumb IMG 2631 1024", 1024, 683},
    {"level28", "Thumb ND7 1741 1024", 1024, 678},
    {"level29", "Thumb IMG 4554 1024", 1024, 529},
    {"level30", "Thumb DSC 0176 1024", 1024, 678},
    {"level31", "G92 P1002765", 2500, 1877},
    {"level32", "P1010418", 2500, 1667},
    {"level33", "DSC00521", 2500, 1667},
    {"level34", "UNADJUSTEDRAW Thumb 9228", 1086, 724},
    {"level35", "IMG 5064", 2500, 1667},
    {"level36", "IMG 4444", 2500, 1665},
    {"level37", "MasterThumb", 1086, 724},
    {"level38", "MasterThumb (1)", 1089, 722},
    {"level39", "MasterThumb (2)", 1086, 724},
    {"level40", "MasterThumb (4)", 1086, 724},
};

}  // namespace

const std::vector<DifficultyDef>& difficulties() {
  static const std::vector<DifficultyDef> list = {
      {0, 5, 6, "easy", "difficulty.easy"},
      {1, 6, 7, "medium", "difficulty.medium"},
      {2, 7, 8, "hard", "difficulty.hard"},
      {3, 8, 9, "expert", "difficulty.expert"},
      {4, 9, 10, "master", "difficulty.master"},
      {5, 10, 11, "grandmaster", "difficulty.grandmaster"},
  };
  return list;
}

const std::vector<Level>& levels() {
  static const std::vector<Level> list = [] {
    std::vector<Level> out;
    for (const LevelRow& row : kLevelRows) {
      const int32_t number = static_cast<int32_t>(std::strtol(row.id + 5, nullptr, 10));
      out.push_back(Level{row.id, row.source, row.width, row.height, number, false});
    }
    return out;
  }();
  return list;
}

namespace {

std::vector<Level>& pictureList() {
  static std::vector<Level> list;
  return list;
}

std::string levelFile(const Level& level, const char* suffix) {
  if (level.own) return pictureLevelDir() + "/" + level.id + suffix;
  return paths::asset("assets/levels/" + level.id + suffix);
}

}  // namespace

const std::vector<Level>& pictureLevels() { return pictureList(); }

void setPictureLevels(std::vector<Level> list) { pictureList() = std::move(list); }

std::string pictureLevelDir() { return paths::dataDir() + "/imported"; }

const Level* levelById(const std::string& id) {
  for (const std::vector<Level>* list : {&levels(), &pictureLevels()}) {
    for (const Level& level : *list) {
      if (level.id == id) return &level;
    }
  }
  return nullptr;
}

std::string levelImagePath(const Level& level) { return levelFile(level, ".jpg"); }

std::string levelBlurPath(const Level& level) { return levelFile(level, "_blur.jpg"); }

}  // namespace core
