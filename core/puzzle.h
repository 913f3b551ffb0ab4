// One game in progress: the pieces with their places, rotations and flags,
// the board geometry in screen units, the tray order and the undo history.
// Everything random in it is drawn from seeds derived from the level id and
// the grid size, so a level at a difficulty is always cut and dealt alike and
// a saved game comes back exactly as it was left.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/edges.h"
#include "store/records.h"
#include "store/settings.h"

namespace core {

struct Piece {
  int32_t row = 0;  // home cell, from the top left
  int32_t col = 0;
  std::string id;  // "<row>_<col>": the key in the undo history and in saves
  PieceEdges edges;
  // Top-left corner of the image box (the cell grown by `pad` on every side);
  // home is x = boardX + col * cellW - pad, y = boardY + row * cellH - pad.
  double x = 0;
  double y = 0;
  // Where the piece was last put down; dealing sets it to x, y and the
  // playing screen animates from it.
  double restX = 0;
  double restY = 0;
  bool placed = false;   // snapped home; fixed from then on
  int32_t rotation = 0;  // degrees clockwise: 0, 90, 180 or 270
  bool inTray = false;   // parked in the tray strip, not on the table
  int32_t z = 0;         // stacking order, larger on top
};

// A free rectangle of the table that takes loose pieces.
struct Zone {
  double x = 0;
  double y = 0;
  double w = 0;
  double h = 0;
};

// Degrees folded into 0..359; a turn of -90 is 270.
inline int32_t normalizedRotation(int32_t degrees) { return ((degrees % 360) + 360) % 360; }

// Below lo gives lo, else the smaller of v and hi.
inline double clampInto(double v, double lo, double hi) { return v < lo ? lo : (v < hi ? v : hi); }

class Puzzle {
 public:
  Puzzle(std::string levelId, int rows, int cols);

  // Saving and coming back (puzzle.cpp).
  store::SavedPuzzle snapshot(bool landscape) const;
  // False, and nothing changed, for a record of another level or grid.
  bool restore(const store::SavedPuzzle& saved, bool landscape);
  void restart();
  bool undo();
  int placedCount() const;
  bool solved() const { return placedCount() == static_cast<int>(pieces.size()); }
  Piece* findPiece(const std::string& id);

  // Fitting the board to the window and dealing (layout.cpp).
  void layout(double viewW, double viewH, double top, store::BoardLayout mode, double trayExtent);
  void computeZones(double viewW, double viewH, double top, store::BoardLayout mode, double trayExtent);
  void scatter(int salt);
  void clampLoose();
  void fillTray();
  void clearTray();
  // The unplaced pieces in the tray, in tray order.
  std::vector<Piece*> trayPieces();
  // The same into a list the caller keeps, so a frame need not allocate.
  void trayPieces(std::vector<Piece*>* out);

  // The player's hand (play.cpp).
  Piece* hitTest(double px, double py);
  void bringToFront(Piece& piece);
  void targetOf(const Piece& piece, double* x, double* y) const;
  double snapThreshold() const;
  // True when the piece snapped home.
  bool drop(Piece& piece, store::BoardLayout mode);
  void rotate(Piece& piece, store::RotationMode mode);
  void applyRotationMode(store::RotationMode mode);

  int64_t elapsedMs = 0;
  std::string levelId;
  int32_t rows = 0;
  int32_t cols = 0;
  uint32_t seed = 0;
  int32_t scatterCount = 0;            // grows with every deal, so each deals anew
  std::vector<Piece> pieces;           // row-major: index = row * cols + col
  std::vector<int32_t> order;          // tray order: a fixed shuffle of all pieces
  std::vector<std::string> undoStack;  // ids of snapped pieces, latest last
  std::vector<Zone> zones;
  int32_t nextZ = 1;
  double boardX = 0;
  double boardY = 0;
  double boardW = 0;
  double boardH = 0;
  double cellW = 0;
  double cellH = 0;
  double pad = 0;  // margin around a cell in a piece image; the knob depth
  // Range of a loose piece's x and y.
  double looseMinX = 0;
  double looseMaxX = 0;
  double looseMinY = 0;
  double looseMaxY = 0;
  // Named apart from layout() above; which of the three board layouts is on.
  store::BoardLayout layoutMode = store::BoardLayout::ScrollTray;
  // The view the last layout() was given.
  double viewW = 0;
  double viewH = 0;

 private:
  void buildPieces();
  // levelId_rows_cols, the text every seed of this puzzle is hashed from.
  std::string gridKey() const;
  void pushUndo(const std::string& id);
};

}  // namespace core
