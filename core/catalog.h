// The two fixed catalogues the rest of the game indexes: the six difficulties
// and the forty built-in photo levels, built once, never copied or changed;
// and after them the player's own pictures, which the store of pictures
// (store/pictures.h) hands over as they come and go.
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
  int32_t number;  // the digits after "level"; 0 for the player's own pictures
  bool own = false;  // one of the player's own pictures, kept in the data folder
};

const std::vector<DifficultyDef>& difficulties();
const std::vector<Level>& levels();
// The player's own pictures, in the order they came. Replacing the list ends
// every pointer into the old one.
const std::vector<Level>& pictureLevels();
void setPictureLevels(std::vector<Level> list);
// Where the player's own pictures are kept.
std::string pictureLevelDir();
// A built-in level or one of the player's pictures; null for an id that is
// neither (an old save, a removed picture, a hand-edited file).
const Level* levelById(const std::string& id);
std::string levelImagePath(const Level& level);
std::string levelBlurPath(const Level& level);

}  // namespace core
