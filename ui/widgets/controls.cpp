#include "ui/widgets/controls.h"

#include <algorithm>

#include "i18n/i18n.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"
#include "ui/widgets/trace.h"

namespace ui {

namespace {

// The knob is easier to catch than the 8-unit track it rides on.
constexpr double kGrabMarginX = 12;
constexpr double kGrabMarginY = 10;

constexpr double kSwitchW = 52, kSwitchH = 28, kSwitchKnob = 11;
constexpr double kKeyStep = 0.05;  // of the range, per Left or Right on a focused slider

}  // namespace

// A slider has no press-drag-release cycle of its own: in every frame in
// which the button is held over its (widened) area it follows the pointer and
// takes the click, so the release that ends the drag presses nothing else.
// Held, it asks for every frame, so the screen may follow the value live.
// Focused, Left and Right step it by a twentieth of the range.
double slider(Ctx& ctx, const Rect& r, double value) {
  traceWidget("slider", r);
  if (const int steps = focusSlide(ctx, r)) value = std::clamp(value + steps * kKeyStep, 0.0, 1.0);
  const Rect grab{r.x - kGrabMarginX, r.y - kGrabMarginY, r.w + 2 * kGrabMarginX, r.h + 2 * kGrabMarginY};
  // A press counts even when the button is let go again within the frame.
  if ((ctx.in.mouseDown || ctx.in.mousePressed) && r.w > 0 && ctx.hover(grab)) {
    ctx.clickTaken = true;
    ctx.requestFrame();
    value = std::clamp((ctx.in.mouseX - r.x) / r.w, 0.0, 1.0);
  }

  const double shown = std::clamp(value, 0.0, 1.0);
  const double cy = r.y + r.h * 0.5;
  const Rect track{r.x, cy - 4, r.w, 8};
  fillRoundedRect(ctx.cr, track, 4, kColorBorder, 1.0);
  const double filled = r.w * shown;
  if (filled > 0) fillRoundedRect(ctx.cr, Rect{track.x, track.y, filled, track.h}, 4, kColorAccent, 1.0);
  fillCircle(ctx.cr, r.x + filled, cy, 10, kColorAccent, 1.0);
  fillCircle(ctx.cr, r.x + filled, cy, 6, kColorBackground, 1.0);
  return value;
}

// Mirrored in a right-to-left language: the label at the right, the switch
// at the left.
bool toggleRow(Ctx& ctx, const Rect& r, const std::string& label, bool on) {
  if (pressWidget(ctx, r, label)) on = !on;

  const bool rtl = i18n::currentIsRtl();
  TextStyle style = labelStyle(15, false, kColorText, r.w - 110);
  style.align = rtl ? kAlignRight : kAlignLeft;
  drawText(ctx.cr, rtl ? r.x + r.w : r.x, r.y + r.h * 0.5 - 10, label, style);
  const double switchX = rtl ? r.x + 58 - kSwitchW : r.x + r.w - 58;
  const Rect sw{switchX, r.y + r.h * 0.5 - kSwitchH * 0.5, kSwitchW, kSwitchH};
  fillRoundedRect(ctx.cr, sw, kSwitchH * 0.5, on ? kColorAccent : kColorBorder, 1.0);
  const double knobX = on ? sw.x + kSwitchW - 14 : sw.x + 14;
  fillCircle(ctx.cr, knobX, sw.y + kSwitchH * 0.5, kSwitchKnob, kColorBackground, 1.0);
  return on;
}

}  // namespace ui
