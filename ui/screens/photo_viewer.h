// Zoom and pan of one picture fitted into an area: the wheel zooms about the
// pointer, a double click toggles between fitted and double size, a drag pans
// and flings. Kept apart from the screen so its rules can be driven directly.
#pragma once

namespace ui {

struct PhotoViewer {
  static constexpr double kMinZoom = 1, kMaxZoom = 5;
  static constexpr double kNotch = 1.15;  // zoom factor of one wheel notch

  double zoom = 1;
  double panX = 0, panY = 0;  // the picture's centre from the area's centre
  double velX = 0, velY = 0;  // units per second after a fling

  bool zoomed() const { return zoom > 1.001; }
  // `notches` > 0 zooms in; (px, py) is the pointer from the area's centre,
  // and the picture point under it stays under it.
  void wheel(double notches, double px, double py);
  void toggleZoom();
  // One frame of a held drag that moved the pointer by (dx, dy).
  void drag(double dx, double dy, double dt);
  void stop() { velX = velY = 0; }
  // One frame without a drag: the fling glides on and slows down.
  void coast(double dt);
  // Keeps the picture, fitted at fitW × fitH, from leaving an areaW × areaH
  // area by more than a quarter of the area.
  void clampPan(double fitW, double fitH, double areaW, double areaH);
};

}  // namespace ui
