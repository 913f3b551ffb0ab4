// The icons are painted from a centre and a nominal width, so the same
// painter serves a 14-unit clock in a gallery card and a 44-unit lock over a
// thumbnail. Each one saves and restores the context: the caps and joins it
// sets must not leak into the caller's next stroke.
#include "ui/widgets/icons.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/draw.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

struct Point {
  double x, y;
};

void fillTriangle(cairo_t* cr, Point a, Point b, Point c) {
  cairo_new_path(cr);
  cairo_move_to(cr, a.x, a.y);
  cairo_line_to(cr, b.x, b.y);
  cairo_line_to(cr, c.x, c.y);
  cairo_close_path(cr);
  fillPath(cr);
}

}  // namespace

void drawShuffleIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha) {
  const double h = size * 0.5;
  const double top = cy - 0.55 * h, bottom = cy + 0.55 * h;
  cairo_save(cr);
  setColor(cr, rgb, alpha);
  cairo_set_line_width(cr, std::max(0.11 * size, 1.6));
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  // Two strands that swap rows; each ends in an arrowhead on the far row.
  for (const auto& [from, to] : {std::pair{top, bottom}, std::pair{bottom, top}}) {
    cairo_new_path(cr);
    cairo_move_to(cr, cx - h, from);
    cairo_curve_to(cr, cx - 0.2 * h, from, cx + 0.2 * h, to, cx + 0.75 * h, to);
    strokePath(cr);
  }
  for (double y : {top, bottom}) {
    fillTriangle(cr, {cx + 0.35 * h, y - 0.3 * h}, {cx + 0.8 * h, y}, {cx + 0.35 * h, y + 0.3 * h});
  }
  cairo_restore(cr);
}

void drawTriangleIcon(cairo_t* cr, double cx, double cy, double size, int direction, uint32_t rgb, double alpha) {
  const double h = size * 0.5;
  cairo_save(cr);
  setColor(cr, rgb, alpha);
  switch (direction) {
    case 0: fillTriangle(cr, {cx, cy - h}, {cx + h, cy + 0.7 * h}, {cx - h, cy + 0.7 * h}); break;
    case 1: fillTriangle(cr, {cx + h, cy}, {cx - 0.7 * h, cy + h}, {cx - 0.7 * h, cy - h}); break;
    case 2: fillTriangle(cr, {cx, cy + h}, {cx - h, cy - 0.7 * h}, {cx + h, cy - 0.7 * h}); break;
    default: fillTriangle(cr, {cx - h, cy}, {cx + 0.7 * h, cy - h}, {cx + 0.7 * h, cy + h}); break;
  }
  cairo_restore(cr);
}

void drawLockIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha) {
  const Rect body{cx - 0.31 * size, cy - 0.25 * size + 0.14 * size, 0.62 * size, 0.5 * size};
  cairo_save(cr);
  fillRoundedRect(cr, body, 0.1 * size, rgb, alpha);
  setColor(cr, rgb, alpha);
  cairo_set_line_width(cr, std::max(0.1 * size, 1.6));
  cairo_new_path(cr);
  cairo_arc(cr, cx, body.y - 0.02 * size, 0.32 * body.w, M_PI, 2 * M_PI);
  strokePath(cr);
  fillCircle(cr, cx, body.y + body.h * 0.5, 0.075 * size, kColorBackground, alpha);
  cairo_restore(cr);
}

void drawClockIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha) {
  const double r = 0.42 * size;
  const double width = std::max(0.09 * size, 1.4);
  cairo_save(cr);
  strokeCircle(cr, cx, cy, r, width, rgb, alpha);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  drawLine(cr, cx, cy, cx, cy - 0.55 * r, width, rgb, alpha);
  drawLine(cr, cx, cy, cx + 0.42 * r, cy + 0.18 * r, width, rgb, alpha);
  cairo_restore(cr);
}

}  // namespace ui
