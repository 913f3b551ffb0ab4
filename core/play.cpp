// The rules by which the player's hand meets the pieces: picking, bringing to
// the top, dropping and snapping home, and turning.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/puzzle.h"
#include "core/random.h"

namespace core {

namespace {

// A hit among the candidates beats the best so far when it is unplaced over a
// placed one, or higher in z at the same state; equal z goes to the later one.
bool beats(const Piece& candidate, const Piece* best) {
  if (!best) return true;
  if (candidate.placed != best->placed) return !candidate.placed;
  return candidate.z >= best->z;
}

}  // namespace

// The whole image box, margins included, is grabbable, not only the knobs'
// outline. A quarter-turned box is shifted along one axis only, so it sits
// |d| off the exactly centred box along the other; the asymmetry is
// deliberate and must be kept.
Piece* Puzzle::hitTest(double px, double py) {
  Piece* best = nullptr;
  for (Piece& piece : pieces) {
    if (piece.inTray) continue;
    double left = piece.x;
    double top = piece.y;
    double w = cellW + 2 * pad;
    double h = cellH + 2 * pad;
    if (piece.rotation % 180 != 0) {
      const double d = (h - w) * 0.5;
      if (d > 0) left -= d;
      if (d < 0) top += d;
      std::swap(w, h);
    }
    if (px < left || px > left + w || py < top || py > top + h) continue;
    if (beats(piece, best)) best = &piece;
  }
  return best;
}

void Puzzle::bringToFront(Piece& piece) { piece.z = nextZ++; }

void Puzzle::targetOf(const Piece& piece, double* x, double* y) const {
  *x = piece.col * cellW + boardX - pad;
  *y = piece.row * cellH + boardY - pad;
}

double Puzzle::snapThreshold() const { return 0.5 * std::min(cellW, cellH); }

// Snaps strictly within half the smaller cell side and only upright: a turned
// piece never snaps, however close. In the scroll-tray layout a piece let go
// wholly off the board goes back to the tray; the test takes the cell size
// from the image box's corner, not the full box.
bool Puzzle::drop(Piece& piece, store::BoardLayout mode) {
  double tx, ty;
  targetOf(piece, &tx, &ty);
  const double dist = std::hypot(piece.x - tx, piece.y - ty);
  const bool snap = dist < snapThreshold() && normalizedRotation(piece.rotation) == 0;
  if (snap) {
    piece.placed = true;
    piece.x = tx;
    piece.y = ty;
    piece.rotation = 0;
    piece.inTray = false;
    pushUndo(piece.id);
  } else if (mode == store::BoardLayout::ScrollTray) {
    const bool offBoard =
        piece.x + cellW < boardX || piece.x > boardX + boardW || piece.y + cellH < boardY || piece.y > boardY + boardH;
    if (offBoard) piece.inTray = true;
  }
  clampLoose();
  return snap;
}

void Puzzle::rotate(Piece& piece, store::RotationMode mode) {
  if (mode == store::RotationMode::Off || piece.placed) return;
  const int step = mode == store::RotationMode::Rot180 ? 180 : 90;
  piece.rotation = normalizedRotation(piece.rotation + step);
}

// Seeded with the scatter count, so every restart turns the pieces anew while
// reopening a saved game (whose pieces carry their rotation) changes nothing.
void Puzzle::applyRotationMode(store::RotationMode mode) {
  Random random(hashString(gridKey() + "_rot_" + std::to_string(scatterCount)));
  for (Piece& piece : pieces) {
    if (piece.placed || mode == store::RotationMode::Off) {
      piece.rotation = 0;
    } else if (mode == store::RotationMode::Rot180) {
      piece.rotation = random.next() < 0.5 ? 0 : 180;
    } else {
      piece.rotation = 90 * random.below(4);
    }
  }
}

}  // namespace core
