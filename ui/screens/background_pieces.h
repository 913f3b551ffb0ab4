// Puzzle pieces cut from the first level photographs, drifting behind the
// menu: they float in from the window's edges, turn slowly, bump into each
// other and are sent in again once they have drifted far enough out.
#pragma once

#include <string>
#include <vector>

#include "core/catalog.h"
#include "core/edges.h"
#include "ui/input.h"

namespace ui {

// The side of a piece's square, knobs included, in logical units.
inline constexpr double kBgPieceSize = 130;

struct BgPiece {
  int image = 0;         // index into the photographs the set was cut from
  int col = 0, row = 0;  // the cell of a 5 x 6 cut of that photograph
  core::PieceEdges edges;
  double x = 0, y = 0;    // top-left corner of the square
  double vx = 0, vy = 0;  // units per second
  double angle = 0;       // degrees, clockwise
  double spin = 0;        // degrees per second
  std::string key;        // of its texture in the GPU layer's cache
};

// How many pieces a window of w x h holds.
int backgroundPieceCount(double w, double h);
// Moves and draws the pieces for this frame, first building a set when there
// is none or the window's width or height has changed by a unit or more.
// The pieces are cut from the first four levels of `catalogue`. With reduced
// motion there are none.
void backgroundPiecesUpdate(Ctx& ctx, const std::vector<core::Level>& catalogue = core::levels());
// Builds the set for this window, if it has none, moves it on and paints as
// many of its textures as fit in `budgetSeconds`, drawing nothing: a screen
// shown before the menu calls it each frame, so the menu opens with every
// piece painted and already drifting in.
void backgroundPiecesPrepare(const Ctx& ctx, double budgetSeconds,
                             const std::vector<core::Level>& catalogue = core::levels());
// Forgets the set and its textures; the next update builds a new one.
void backgroundPiecesReset();
// The set as it is now (empty before the first update).
std::vector<BgPiece>& backgroundPieces();

}  // namespace ui
