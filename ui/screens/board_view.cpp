#include "ui/screens/board_view.h"

#include <algorithm>

namespace ui {

namespace {

double clampZoom(double z) { return std::clamp(z, kMinZoom, kMaxZoom); }

}  // namespace

void BoardView::zoomAt(double z, double cx, double cy) {
  const double next = clampZoom(z);
  offsetX = cx - (cx - offsetX) * next / zoom;
  offsetY = cy - (cy - offsetY) * next / zoom;
  zoom = next;
  if (!zoomed()) offsetX = offsetY = 0;
}

void BoardView::zoomCentred(double z, const core::Puzzle& p, double viewW, double viewH) {
  zoom = clampZoom(z);
  if (!zoomed()) {
    offsetX = offsetY = 0;
    return;
  }
  offsetX = viewW * 0.5 - (p.boardX + p.boardW * 0.5) * zoom;
  offsetY = viewH * 0.5 - (p.boardY + p.boardH * 0.5) * zoom;
}

void BoardView::reset() {
  zoom = 1.0;
  offsetX = offsetY = 0;
}

void BoardView::clampPan(const core::Puzzle& p, double viewW, double viewH) {
  if (!zoomed()) {
    offsetX = offsetY = 0;
    return;
  }
  offsetX = std::clamp(offsetX, viewW * 0.5 - (p.boardX + p.boardW) * zoom, viewW * 0.5 - p.boardX * zoom);
  offsetY = std::clamp(offsetY, viewH * 0.5 - (p.boardY + p.boardH) * zoom, viewH * 0.5 - p.boardY * zoom);
}

}  // namespace ui
