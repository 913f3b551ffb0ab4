#include "ui/draw.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "ui/frame_layer.h"

namespace ui {

namespace {

struct PathDeleter {
  void operator()(cairo_path_t* p) const { cairo_path_destroy(p); }
};

}  // namespace

void setColor(cairo_t* cr, uint32_t rgb, double alpha) {
  cairo_set_source_rgba(cr, ((rgb >> 16) & 255) / 255.0, ((rgb >> 8) & 255) / 255.0, (rgb & 255) / 255.0, alpha);
}

void fillPath(cairo_t* cr) {
  double x0, y0, x1, y1;
  cairo_path_extents(cr, &x0, &y0, &x1, &y1);
  layerDamage(cr, x0, y0, x1 - x0, y1 - y0);
  cairo_fill(cr);
}

void strokePath(cairo_t* cr, bool preserve) {
  double x0, y0, x1, y1;
  cairo_path_extents(cr, &x0, &y0, &x1, &y1);
  // Mitred corners reach further than half the width from the path.
  const double m = cairo_get_line_width(cr) * (cairo_get_line_join(cr) == CAIRO_LINE_JOIN_MITER ? 5 : 1);
  layerDamage(cr, x0 - m, y0 - m, x1 - x0 + 2 * m, y1 - y0 + 2 * m);
  if (preserve) {
    cairo_stroke_preserve(cr);
  } else {
    cairo_stroke(cr);
  }
}

void fillRect(cairo_t* cr, const Rect& r, uint32_t rgb, double alpha) {
  setColor(cr, rgb, alpha);
  cairo_rectangle(cr, r.x, r.y, r.w, r.h);
  fillPath(cr);
}

void roundedRectPath(cairo_t* cr, const Rect& r, double radius) {
  const double rad = std::min(radius, std::min(r.w, r.h) * 0.5);
  cairo_new_sub_path(cr);
  cairo_arc(cr, r.x + r.w - rad, r.y + rad, rad, -M_PI / 2, 0);
  cairo_arc(cr, r.x + r.w - rad, r.y + r.h - rad, rad, 0, M_PI / 2);
  cairo_arc(cr, r.x + rad, r.y + r.h - rad, rad, M_PI / 2, M_PI);
  cairo_arc(cr, r.x + rad, r.y + rad, rad, M_PI, 3 * M_PI / 2);
  cairo_close_path(cr);
}

void fillRoundedRect(cairo_t* cr, const Rect& r, double radius, uint32_t rgb, double alpha) {
  roundedRectPath(cr, r, radius);
  setColor(cr, rgb, alpha);
  fillPath(cr);
}

void strokeRoundedRect(cairo_t* cr, const Rect& r, double radius, double lineWidth, uint32_t rgb, double alpha) {
  roundedRectPath(cr, r, radius);
  setColor(cr, rgb, alpha);
  cairo_set_line_width(cr, lineWidth);
  strokePath(cr);
}

void fillCircle(cairo_t* cr, double cx, double cy, double r, uint32_t rgb, double alpha) {
  setColor(cr, rgb, alpha);
  cairo_new_sub_path(cr);
  cairo_arc(cr, cx, cy, r, 0, 2 * M_PI);
  fillPath(cr);
}

void strokeCircle(cairo_t* cr, double cx, double cy, double r, double lineWidth, uint32_t rgb, double alpha) {
  setColor(cr, rgb, alpha);
  cairo_new_sub_path(cr);
  cairo_arc(cr, cx, cy, r, 0, 2 * M_PI);
  cairo_set_line_width(cr, lineWidth);
  strokePath(cr);
}

void drawLine(cairo_t* cr, double x1, double y1, double x2, double y2, double lineWidth, uint32_t rgb,
              double alpha) {
  setColor(cr, rgb, alpha);
  cairo_set_line_width(cr, lineWidth);
  cairo_move_to(cr, x1, y1);
  cairo_line_to(cr, x2, y2);
  strokePath(cr);
}

// No real blur: n strokes of shrinking width, each at alpha / n, pile up to an
// edge that is darkest at the shape and fades out over `blur` units.
void softShadowFromPath(cairo_t* cr, double dx, double dy, double blur, uint32_t rgb, double alpha) {
  const std::unique_ptr<cairo_path_t, PathDeleter> path(cairo_copy_path(cr));
  const int n = std::max(static_cast<int>(blur), 2);
  cairo_save(cr);
  cairo_translate(cr, dx, dy);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  setColor(cr, rgb, alpha / n);
  for (int i = n; i >= 1; --i) {
    cairo_new_path(cr);
    cairo_append_path(cr, path.get());
    cairo_set_line_width(cr, i * 2.0 * blur / n);
    strokePath(cr, true);
    fillPath(cr);
  }
  cairo_restore(cr);
  cairo_new_path(cr);
  cairo_append_path(cr, path.get());
}

}  // namespace ui
