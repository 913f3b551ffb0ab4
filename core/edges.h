// Which side of every interior seam carries the knob and which the socket.
// A saved puzzle is restored by cutting it again, so the same (rows, cols,
// seed) must always give the same grid.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"

namespace core {

// 0 straight (the puzzle's border only), +1 a knob bulging out of the cell,
// -1 a socket biting into it. Neighbours always carry opposite signs.
struct PieceEdges {
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  int32_t left = 0;
};

// rows lists of cols entries; [r][c] is the piece in row r, column c.
using EdgeGrid = std::vector<std::vector<PieceEdges>>;

EdgeGrid generateEdges(int rows, int cols, unsigned int seed);
// The same cut drawn from a generator the caller holds: it is left just past
// the last seam drawn, (rows - 1) * cols + rows * (cols - 1) draws on.
EdgeGrid generateEdges(int rows, int cols, Random& random);

}  // namespace core
