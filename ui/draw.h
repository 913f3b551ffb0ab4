// Cairo drawing conventions shared by every widget and screen: colours are
// 0xRRGGBB plus a separate alpha, geometry is in logical units.
#pragma once

#include <cairo.h>

#include <cstdint>

#include "ui/input.h"

namespace ui {

void setColor(cairo_t* cr, uint32_t rgb, double alpha);
// cairo_fill and cairo_stroke (or its preserving form) that also tell the
// frame layer where they drew: every drawing on the layer goes through these.
void fillPath(cairo_t* cr);
void strokePath(cairo_t* cr, bool preserve = false);
void fillRect(cairo_t* cr, const Rect& r, uint32_t rgb, double alpha);
// The radius is clamped to half the shorter side, so a huge radius gives a capsule.
void roundedRectPath(cairo_t* cr, const Rect& r, double radius);
void fillRoundedRect(cairo_t* cr, const Rect& r, double radius, uint32_t rgb, double alpha);
void strokeRoundedRect(cairo_t* cr, const Rect& r, double radius, double lineWidth, uint32_t rgb, double alpha);
void fillCircle(cairo_t* cr, double cx, double cy, double r, uint32_t rgb, double alpha);
void strokeCircle(cairo_t* cr, double cx, double cy, double r, double lineWidth, uint32_t rgb, double alpha);
void drawLine(cairo_t* cr, double x1, double y1, double x2, double y2, double lineWidth, uint32_t rgb,
              double alpha);
// Paints a soft shadow of the current path, offset by (dx, dy) and fading out
// over `blur` units, and leaves the current path as it was so the caller can
// fill the shape on top.
void softShadowFromPath(cairo_t* cr, double dx, double dy, double blur, uint32_t rgb, double alpha);

}  // namespace ui
