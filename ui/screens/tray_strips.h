// The scroll tray: pieces waiting in two strips along the board's sides (left
// and right in a landscape window, top and bottom in a portrait one, where
// the board layout reserves their room). A fresh tray is split in two, the
// first half of the tray order in the first strip, the rest in the second;
// from then on each piece keeps its strip, so taking one out closes the gap
// in that strip only, and a piece put back joins the strip it was let go
// over. Each strip scrolls on its own, by wheel or by dragging its empty part.
#pragma once

#include <cstdint>
#include <vector>

#include "core/puzzle.h"
#include "ui/input.h"

namespace ui {

class TrayStrips {
 public:
  static constexpr double kExtent = 112;  // the room the board layout reserves
  static constexpr double kThumb = 96;    // thumbnail size
  static constexpr double kPitch = 100;   // thumbnail plus gap

  // Strip rects for the view below a header of height `top`.
  void layout(double viewW, double viewH, double top);
  // Takes the tray pieces from the puzzle, in tray order, each into its strip
  // (lists kept across frames).
  void setPieces(core::Puzzle& puzzle);
  // The piece with this index goes back into strip i.
  void putBack(int index, int i);

  const Rect& strip(int i) const { return strips_[i]; }
  // The table between the two strips, below a header of height `top`.
  Rect table(double viewW, double viewH, double top) const;
  const std::vector<core::Piece*>& items(int i) const { return items_[i]; }
  // The thumbnail box of item k of strip i, scrolled.
  Rect slot(int i, size_t k) const;
  // The strip under the point, or -1.
  int stripAt(double x, double y) const;
  // The piece whose thumbnail is under the point, or null.
  core::Piece* pieceAt(double x, double y) const;

  // Where the piece's thumbnail is: its strip and place in it; false when
  // it is in neither strip.
  bool find(const core::Piece* piece, int* strip, size_t* k) const;
  // Scrolls strip i just enough to show item k whole.
  void reveal(int i, size_t k);

  // Wheel over a strip scrolls it; a press on a strip's empty part starts a
  // drag that scrolls it until release. True while the tray took the input.
  bool handleScroll(const Ctx& ctx);

 private:
  double length(int i) const { return vertical_ ? strips_[i].h : strips_[i].w; }
  double maxScroll(int i) const;
  void clampScroll();

  Rect strips_[2];
  bool vertical_ = true;
  std::vector<core::Piece*> all_;
  std::vector<core::Piece*> items_[2];
  std::vector<int8_t> stripOf_, seen_;  // by piece index; -1 while not in the tray
  double scroll_[2] = {0, 0};
  int dragStrip_ = -1;
};

}  // namespace ui
