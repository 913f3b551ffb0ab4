#include "ui/widgets/look.h"

#include "audio/audio.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/widgets/trace.h"

namespace ui {

void drawBox(cairo_t* cr, const Rect& r, double radius, const BoxLook& look) {
  fillRoundedRect(cr, r, radius, look.fill, look.fillAlpha);
  if (look.borderWidth > 0) strokeRoundedRect(cr, r, radius, look.borderWidth, look.border, look.borderAlpha);
}

TextStyle labelStyle(double size, bool bold, uint32_t rgb, double maxWidth) {
  TextStyle s;
  s.size = size;
  s.bold = bold;
  s.color = rgb;
  s.maxWidth = maxWidth;
  return s;
}

void drawLabel(cairo_t* cr, const Rect& r, const std::string& text, const TextStyle& style) {
  drawTextCentered(cr, r.x + r.w * 0.5, r.y + r.h * 0.5, text, style);
}

bool pressWidget(Ctx& ctx, const Rect& r, const std::string& traceLabel) {
  traceWidget(traceLabel, r);
  const bool keyed = focusPressed(ctx, r);  // registered in the focus order whatever the pointer does
  if (!ctx.takeClick(r) && !keyed) return false;
  audio::play(audio::Sfx::Click);
  return true;
}

}  // namespace ui
