#include "core/edges.h"

namespace core {

namespace {

int32_t seamSign(Random& random) { return random.next() < 0.5 ? 1 : -1; }

}  // namespace

EdgeGrid generateEdges(int rows, int cols, unsigned int seed) {
  Random random(seed);
  return generateEdges(rows, cols, random);
}

// Each seam is stored once, seen from the upper or left piece (+1: its knob
// points down or right). Saved games depend on the draw order: all horizontal
// seams row by row first, then all vertical seams row by row.
EdgeGrid generateEdges(int rows, int cols, Random& random) {
  if (rows <= 0 || cols < 0) return {};
  std::vector<std::vector<int32_t>> h(rows + 1, std::vector<int32_t>(cols, 0));
  for (int r = 1; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) h[r][c] = seamSign(random);
  }
  std::vector<std::vector<int32_t>> v(rows, std::vector<int32_t>(cols + 1, 0));
  for (int r = 0; r < rows; ++r) {
    for (int c = 1; c < cols; ++c) v[r][c] = seamSign(random);
  }
  EdgeGrid grid(rows, std::vector<PieceEdges>(cols));
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      grid[r][c] = PieceEdges{-h[r][c], v[r][c + 1], h[r + 1][c], -v[r][c]};
    }
  }
  return grid;
}

}  // namespace core
