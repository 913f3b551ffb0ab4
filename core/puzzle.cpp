#include "core/puzzle.h"

#include <cmath>
#include <utility>

#include "core/random.h"

namespace core {

namespace {

// At most this many snaps can be taken back.
constexpr size_t kUndoDepth = 50;

}  // namespace

Puzzle::Puzzle(std::string id, int rowCount, int colCount) : levelId(std::move(id)), rows(rowCount), cols(colCount) {
  seed = hashString(gridKey());
  buildPieces();
}

std::string Puzzle::gridKey() const { return levelId + "_" + std::to_string(rows) + "_" + std::to_string(cols); }

// The cut and the tray order are contracts with the saves file: a game is
// restored by rebuilding them from the seed, not by storing them.
void Puzzle::buildPieces() {
  const EdgeGrid edges = generateEdges(rows, cols, seed);
  pieces.clear();
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      Piece piece;
      piece.row = r;
      piece.col = c;
      piece.id = std::to_string(r) + "_" + std::to_string(c);
      piece.edges = edges[r][c];
      pieces.push_back(std::move(piece));
    }
  }
  order.resize(pieces.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int32_t>(i);
  Random random(seed * 101u + 5u);
  shuffle(order, random);
}

int Puzzle::placedCount() const {
  int n = 0;
  for (const Piece& piece : pieces) n += piece.placed ? 1 : 0;
  return n;
}

Piece* Puzzle::findPiece(const std::string& id) {
  for (Piece& piece : pieces) {
    if (piece.id == id) return &piece;
  }
  return nullptr;
}

store::SavedPuzzle Puzzle::snapshot(bool landscape) const {
  store::SavedPuzzle saved;
  saved.valid = true;
  saved.imageId = levelId;
  saved.rows = rows;
  saved.cols = cols;
  saved.boardW = boardW;
  saved.boardH = boardH;
  saved.boardX = boardX;
  saved.boardY = boardY;
  saved.landscape = landscape;
  saved.elapsedMs = elapsedMs;
  for (const Piece& piece : pieces) {
    store::SavedPiece s;
    s.id = piece.id;
    s.x = piece.x;
    s.y = piece.y;
    s.placed = piece.placed;
    s.rotation = piece.placed ? 0 : piece.rotation;
    s.inTray = !piece.placed && piece.inTray;
    saved.pieces.push_back(std::move(s));
  }
  return saved;
}

// Loose pieces keep their saved places only on a board of the same size and
// orientation; on any other they keep the places the current layout dealt,
// since positions from another window could lie anywhere on this one.
bool Puzzle::restore(const store::SavedPuzzle& saved, bool landscape) {
  if (!saved.valid) return false;
  if (saved.imageId != levelId || saved.rows != rows || saved.cols != cols) return false;
  const bool sameGeometry =
      std::abs(saved.boardW - boardW) < 0.5 && std::abs(saved.boardH - boardH) < 0.5 && saved.landscape == landscape;
  elapsedMs = saved.elapsedMs;
  for (const store::SavedPiece& s : saved.pieces) {
    Piece* piece = findPiece(s.id);
    if (!piece) continue;
    piece->placed = s.placed;
    piece->inTray = s.inTray && !s.placed;
    if (piece->placed) {
      piece->rotation = 0;
      targetOf(*piece, &piece->x, &piece->y);
    } else {
      piece->rotation = normalizedRotation(s.rotation);
      // A piece the table cannot hold where it was keeps the place the deal
      // gave it, rather than joining a pile at the table's edge.
      const double x = boardX - saved.boardX + s.x, y = boardY - saved.boardY + s.y;
      if (sameGeometry && clampInto(x, looseMinX, looseMaxX) == x && clampInto(y, looseMinY, looseMaxY) == y) {
        piece->x = x;
        piece->y = y;
      }
    }
    // A restored game opens still, not with every piece gliding into place.
    piece->restX = piece->x;
    piece->restY = piece->y;
  }
  return true;
}

void Puzzle::restart() {
  for (Piece& piece : pieces) {
    piece.placed = false;
    piece.rotation = 0;
    piece.inTray = false;
    piece.z = 0;
  }
  undoStack.clear();
  elapsedMs = 0;
  nextZ = 1;
  scatter(7);
  if (layoutMode == store::BoardLayout::ScrollTray) fillTray();
}

void Puzzle::pushUndo(const std::string& id) {
  undoStack.push_back(id);
  if (undoStack.size() > kUndoDepth) undoStack.erase(undoStack.begin());
}

// Only snaps are recorded. The piece stays on its home cell and simply
// becomes loose again, on top of everything.
bool Puzzle::undo() {
  if (undoStack.empty()) return false;
  const std::string id = undoStack.back();
  undoStack.pop_back();
  Piece* piece = findPiece(id);
  if (!piece || !piece->placed) return false;
  piece->placed = false;
  piece->rotation = 0;
  bringToFront(*piece);
  return true;
}

}  // namespace core
