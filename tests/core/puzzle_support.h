// Small moves a player makes, shared by the puzzle tests.
#pragma once

#include "core/puzzle.h"

namespace testsupport {

// Takes the piece out of the tray and lays it down (dx, dy) off its home.
inline void moveNearHome(core::Puzzle& puzzle, core::Piece& piece, double dx = 0, double dy = 0) {
  double tx, ty;
  puzzle.targetOf(piece, &tx, &ty);
  piece.inTray = false;
  piece.x = tx + dx;
  piece.y = ty + dy;
}

inline bool dropHome(core::Puzzle& puzzle, core::Piece& piece) {
  moveNearHome(puzzle, piece);
  return puzzle.drop(piece, puzzle.layoutMode);
}

}  // namespace testsupport
