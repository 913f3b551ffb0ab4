// The records a game in progress and the solve history are kept in, in memory
// and in the saves file. Plain values: copying one copies everything.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/settings.h"

namespace store {

// What a number read from the saves file is clamped to before the game
// computes with it: room for any real game, and far from overflowing.
inline constexpr int64_t kMaxPlayMs = 100LL * 365 * 24 * 3600 * 1000;  // a century of play
// Stamps may lie either side of 1970, up to the end of the year 9999.
inline constexpr int64_t kMaxStampMs = 253402300799999;
inline constexpr int kMaxGridSide = 100;       // rows or columns
inline constexpr double kMaxCoordinate = 1e6;  // board units, either sign

struct SavedPiece {
  std::string id;
  double x = 0;
  double y = 0;
  bool placed = false;
  int rotation = 0;
  bool inTray = false;
};

struct SavedPuzzle {
  bool valid = false;  // only valid puzzles are written
  std::string imageId;
  int rows = 0;
  int cols = 0;
  double boardW = 0;
  double boardH = 0;
  double boardX = 0;
  double boardY = 0;
  bool landscape = true;  // "orientation": "landscape" / "portrait"
  std::vector<SavedPiece> pieces;
  int64_t elapsedMs = 0;
  int64_t savedAt = 0;  // wall clock, ms since the Unix epoch
  RotationMode rotationMode = RotationMode::Off;
};

struct SolveEntry {
  std::string id;  // "<solvedAt>_<entries before this one>"
  std::string imageId;
  int rows = 0;
  int cols = 0;
  int64_t elapsedMs = 0;
  int64_t solvedAt = 0;
};

}  // namespace store
