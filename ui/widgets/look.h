// The looks the widgets share: a filled and outlined box, a label centred on
// a rect, and the press that every clickable widget performs. Internal to the
// widget kit; screens use the widgets, not these.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>

#include "ui/input.h"
#include "ui/text.h"

namespace ui {

struct BoxLook {
  uint32_t fill = 0;
  double fillAlpha = 1.0;
  uint32_t border = 0;
  double borderWidth = 0;  // 0: no outline
  double borderAlpha = 1.0;
};

// Fill, then the outline on top.
void drawBox(cairo_t* cr, const Rect& r, double radius, const BoxLook& look);

// A label style in the interface font; `maxWidth` 0 means no limit.
TextStyle labelStyle(double size, bool bold, uint32_t rgb, double maxWidth);
void drawLabel(cairo_t* cr, const Rect& r, const std::string& text, const TextStyle& style);

// Records the widget for tests, asks for the frame's click (or, focused, for
// Return or Space) and plays the click sound when it is taken.
bool pressWidget(Ctx& ctx, const Rect& r, const std::string& traceLabel);

}  // namespace ui
