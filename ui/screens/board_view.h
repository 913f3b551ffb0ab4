// The playing screen's view of the board: a zoom factor and a pan offset,
// mapping board units (where the puzzle lives) to screen units:
// screen = board x zoom + offset.
#pragma once

#include "core/puzzle.h"

namespace ui {

inline constexpr double kMinZoom = 1.0;
inline constexpr double kMaxZoom = 4.0;
inline constexpr double kZoomStep = 0.25;   // keys and header buttons
inline constexpr double kWheelFactor = 1.15;  // one wheel notch

struct BoardView {
  double zoom = 1.0;
  double offsetX = 0;
  double offsetY = 0;

  double toScreenX(double bx) const { return bx * zoom + offsetX; }
  double toScreenY(double by) const { return by * zoom + offsetY; }
  double toBoardX(double sx) const { return (sx - offsetX) / zoom; }
  double toBoardY(double sy) const { return (sy - offsetY) / zoom; }
  bool zoomed() const { return zoom > 1.001; }

  // Zooms to `z` (clamped to [1, 4]) keeping the screen point (cx, cy) over
  // the same spot of the board.
  void zoomAt(double z, double cx, double cy);
  // Zooms to `z` (clamped) with the board's centre in the middle of the
  // view; at zoom 1 the offsets are 0.
  void zoomCentred(double z, const core::Puzzle& p, double viewW, double viewH);
  void reset();
  // Keeps some of the board under the middle of the view, so panning can
  // never lose it.
  void clampPan(const core::Puzzle& p, double viewW, double viewH);
};

}  // namespace ui
