// The two fixed catalogues the rest of the game indexes: the six difficulties
// and the forty built-in photo levels. Built once, never copied or changed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace core {

struct DifficultyDef {
  int32_t index;  // what settings and saves store to name a difficulty
  int32_t rows;
  int32_t cols;
  const char* id;
  const char* nameKey;  // translation key of the display name
};

struct Level {
  std::string id;      // "level1" .. "level40": the key in saves and file names
  std::string source;  // the photo's catalogued source name; descriptive only
  int32_t width;
  int32_t height;
  int32_t number;  // the digits after "level"
};

const std::vector<DifficultyDef>& difficulties();
const std::vector<Level>& levels();
// Null for an id that is not in the catalogue (an old save, a hand-edited file).
const Level* levelById(const std::string& id);
std::string levelImagePath(const Level& level);
std::string levelBlurPath(const Level& level);

}  // namespace core
