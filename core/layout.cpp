// Fitting the board to the window, the free table zones around it, and
// dealing loose pieces into them. Dealing draws from a generator seeded by the
// puzzle's seed and the running scatter count, so a saved game's deal can be
// drawn again and every restart (which adds to the count) deals differently.
#include <algorithm>
#include <cmath>

#include "core/catalog.h"
#include "core/puzzle.h"
#include "core/random.h"

namespace core {

namespace {

using store::BoardLayout;

// What the window leaves for the board and the table once the scroll tray's
// strip is reserved. The strip is reserved on both opposite sides so the board
// stays centred in the window whichever side the strip is drawn on.
struct Frame {
  double leftOff = 0;
  double rightEdge = 0;
  double availW = 0;
  double topAdd = 0;
  double bottomReserve = 8;
};

Frame frameFor(double viewW, bool portrait, bool scroll, double trayExtent) {
  Frame f;
  f.rightEdge = viewW;
  f.availW = viewW;
  if (scroll && portrait) {
    f.topAdd = trayExtent;
    f.bottomReserve = 8 + trayExtent;
  } else if (scroll) {
    f.leftOff = trayExtent + 16;
    f.rightEdge = viewW - (trayExtent + 16);
    f.availW = viewW - 2 * (trayExtent + 16);
  }
  return f;
}

double levelAspect(const std::string& levelId) {
  const Level* level = levelById(levelId);
  if (!level || level->height <= 0) return 1.5;
  return static_cast<double>(level->width) / level->height;
}

Zone zone(double x, double y, double w, double h) { return Zone{x, y, std::max(w, 0.0), std::max(h, 0.0)}; }

// A slot grid laid over one zone for the tray-grid deal.
struct SlotGrid {
  const Zone* zone;
  int slotsX;
  int capacity;
  int fill = 0;
};

void putDown(Puzzle& p, Piece& piece, double x, double y) {
  piece.x = clampInto(x, p.looseMinX, p.looseMaxX);
  piece.y = clampInto(y, p.looseMinY, p.looseMaxY);
  piece.restX = piece.x;
  piece.restY = piece.y;
}

// Scattered and scroll tray: a zone picked in proportion to its area, then a
// spot in it; three draws per unplaced piece, tray pieces included so that
// they have a place on the table when taken out.
void dealRandom(Puzzle& p, const std::vector<Zone>& usable, double total, Random& random) {
  const double pieceW = p.cellW + 2 * p.pad;
  const double pieceH = p.cellH + 2 * p.pad;
  for (Piece& piece : p.pieces) {
    if (piece.placed) continue;
    if (usable.empty() || total <= 0) {
      putDown(p, piece, std::min(p.looseMinX, p.looseMaxX), std::min(p.looseMinY, p.looseMaxY));
      continue;
    }
    double t = random.next() * total;
    const Zone* chosen = &usable.front();
    for (const Zone& z : usable) {
      t -= z.w * z.h;
      if (t <= 0) {
        chosen = &z;
        break;
      }
    }
    const double x = chosen->x + random.next() * std::max(chosen->w - pieceW, 0.0);
    const double y = chosen->y + random.next() * std::max(chosen->h - pieceH, 0.0);
    putDown(p, piece, x, y);
  }
}

// Tray grid: pieces in a shuffled order fill the emptiest zone's next slot;
// a full zone takes further layers, each shifted by 5 units (24 at most).
void dealGrid(Puzzle& p, const std::vector<Zone>& usable, Random& random) {
  const double pieceW = p.cellW + 2 * p.pad;
  const double pieceH = p.cellH + 2 * p.pad;
  std::vector<int32_t> perm(p.pieces.size());
  for (size_t i = 0; i < perm.size(); ++i) perm[i] = static_cast<int32_t>(i);
  shuffle(perm, random);
  const double slot = std::max(pieceW, pieceH) + 6;
  std::vector<SlotGrid> grids;
  for (const Zone& z : usable) {
    const int slotsX = std::max(1, static_cast<int>(std::floor(z.w / slot)));
    const int slotsY = std::max(1, static_cast<int>(std::floor(z.h / slot)));
    grids.push_back(SlotGrid{&z, slotsX, slotsX * slotsY});
  }
  for (const int32_t index : perm) {
    Piece& piece = p.pieces[index];
    if (piece.placed) continue;
    if (grids.empty()) {
      putDown(p, piece, p.looseMinX, p.looseMinY);
      continue;
    }
    SlotGrid* g = &grids.front();
    for (SlotGrid& candidate : grids) {
      if (static_cast<double>(candidate.fill) / candidate.capacity < static_cast<double>(g->fill) / g->capacity) {
        g = &candidate;
      }
    }
    const Zone& z = *g->zone;
    const int layer = g->fill / g->capacity;
    const int r = g->fill % g->capacity;
    const double offset = std::min(24, 5 * layer);
    const double x = z.x + (r % g->slotsX) * slot + offset;
    const double y = z.y + (r / g->slotsX) * slot + offset;
    putDown(p, piece, clampInto(x, z.x, z.x + std::max(z.w - pieceW, 0.0)),
            clampInto(y, z.y, z.y + std::max(z.h - pieceH, 0.0)));
    ++g->fill;
  }
}

}  // namespace

void Puzzle::computeZones(double vw, double vh, double top, BoardLayout mode, double trayExtent) {
  const bool portrait = vh > vw;
  const bool scroll = mode == BoardLayout::ScrollTray;
  const Frame f = frameFor(vw, portrait, scroll, trayExtent);
  const double boardTop = top + f.topAdd;
  const double availH = std::max(vh - boardTop - f.bottomReserve, 100.0);
  const double availW = std::max(f.availW, 100.0);
  const double aspect = levelAspect(levelId);
  const double fracW = scroll ? 0.94 : (portrait ? 0.92 : 0.6);
  const double fracH = scroll ? 0.94 : (portrait ? 0.55 : 0.85);
  boardW = fracW * availW;
  boardH = boardW / aspect;
  if (boardH > fracH * availH) {
    boardH = fracH * availH;
    boardW = aspect * boardH;
  }
  cellW = boardW / cols;
  cellH = boardH / rows;
  pad = 0.22 * std::min(cellW, cellH);
  boardX = (availW - boardW) * 0.5 + f.leftOff;
  boardY = (availH - boardH) * 0.5 + boardTop;

  const double pieceW = cellW + 2 * pad;
  const double pieceH = cellH + 2 * pad;
  const double floorY = vh - f.bottomReserve;
  looseMinX = 4 + f.leftOff;
  looseMaxX = std::max(looseMinX, f.rightEdge - pieceW - 4);
  looseMinY = boardTop;
  looseMaxY = std::max(boardTop, floorY - pieceH);

  const double gap = 8 + pad;
  zones.clear();
  if (portrait) {
    const double x = f.leftOff + gap;
    const double w = (f.rightEdge - gap) - x;
    zones.push_back(zone(x, boardTop + pad, w, boardY - (boardTop + pad) - gap));
    zones.push_back(zone(x, boardY + boardH + gap, w, floorY - pad - (boardY + boardH) - gap));
  } else {
    const double y = boardTop + pad;
    const double h = floorY - pad - y;
    zones.push_back(zone(f.leftOff + gap, y, boardX - (f.leftOff + gap) - gap, h));
    const double rightX = boardX + boardW + gap;
    zones.push_back(zone(rightX, y, f.rightEdge - gap - rightX, h));
  }
}

// A mode switch deals before it takes the new mode, so that deal still
// follows the old mode's style; the saved deals depend on keeping it so.
void Puzzle::layout(double vw, double vh, double top, BoardLayout mode, double trayExtent) {
  const double oldX = boardX;
  const double oldY = boardY;
  const double oldW = boardW;
  const double oldH = boardH;
  computeZones(vw, vh, top, mode, trayExtent);
  viewW = vw;
  viewH = vh;
  if (!(oldW > 0)) {
    layoutMode = mode;
    scatter(0);
    if (mode == BoardLayout::ScrollTray) fillTray();
    return;
  }
  const bool changed = std::abs(boardW - oldW) > 0.5 || std::abs(boardH - oldH) > 0.5 ||
                       std::abs(boardX - oldX) > 0.5 || std::abs(boardY - oldY) > 0.5;
  if (mode != layoutMode) {
    if (mode != BoardLayout::ScrollTray) {
      clearTray();
      scatter(0);
    } else {
      fillTray();
    }
    layoutMode = mode;
  }
  if (!changed) return;
  const double sx = oldW > 0 ? boardW / oldW : 1.0;
  const double sy = oldH > 0 ? boardH / oldH : 1.0;
  for (Piece& piece : pieces) {
    if (piece.placed) {
      targetOf(piece, &piece.x, &piece.y);
    } else if (!piece.inTray) {
      piece.x = (piece.x - oldX) * sx + boardX;
      piece.y = (piece.y - oldY) * sy + boardY;
    }
    piece.restX = (piece.restX - oldX) * sx + boardX;
    piece.restY = (piece.restY - oldY) * sy + boardY;
  }
  clampLoose();
}

void Puzzle::scatter(int salt) {
  scatterCount += salt;
  std::vector<Zone> usable;
  double total = 0;
  for (const Zone& z : zones) {
    if (z.w > cellW + 2 * pad && z.h > cellH + 2 * pad) {
      usable.push_back(z);
      total += z.w * z.h;
    }
  }
  Random random(seed * 31u + static_cast<uint32_t>(scatterCount) * 97u + 11u);
  if (layoutMode == BoardLayout::Tray) {
    dealGrid(*this, usable, random);
  } else {
    dealRandom(*this, usable, total, random);
  }
}

void Puzzle::clampLoose() {
  for (Piece& piece : pieces) {
    if (piece.placed || piece.inTray) continue;
    piece.x = clampInto(piece.x, looseMinX, looseMaxX);
    piece.y = clampInto(piece.y, looseMinY, looseMaxY);
  }
}

void Puzzle::fillTray() {
  for (Piece& piece : pieces) {
    if (!piece.placed) piece.inTray = true;
  }
}

void Puzzle::clearTray() {
  for (Piece& piece : pieces) piece.inTray = false;
}

std::vector<Piece*> Puzzle::trayPieces() {
  std::vector<Piece*> out;
  trayPieces(&out);
  return out;
}

void Puzzle::trayPieces(std::vector<Piece*>* out) {
  out->clear();
  for (const int32_t index : order) {
    Piece& piece = pieces[index];
    if (piece.inTray && !piece.placed) out->push_back(&piece);
  }
}

}  // namespace core
