// The colour is HSL with hue on a bar and lightness on a slider, the
// saturation fixed, so two controls reach every colour a player is likely to
// want for a board or a background. Each channel follows
//   k = (n + hue / 30) mod 12,  value = L - a * clamp(min(k - 3, 9 - k), -1, 1)
// with n = 0, 8, 4 for red, green and blue and a = saturation * min(L, 1 - L).
//
//   input while open                     effect
//   press on the hue bar                 hue follows the pointer until release,
//                                        clamped to the bar's ends
//   Left / Right on the focused bar      hue steps by 10 degrees
//   drag on the brightness slider        lightness follows the pointer
//   OK, Return                           Chosen
//   Cancel, Escape                       Cancelled (Escape wins over Return)
//   click beside the box                 nothing
#include "ui/widgets/color_picker.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <cmath>

#include "i18n/i18n.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"
#include "ui/widgets/trace.h"

namespace ui {

namespace {

constexpr double kSaturation = 0.65;
constexpr double kMinLightness = 0.05, kMaxLightness = 0.95;
constexpr double kBoxMaxW = 420, kBoxH = 320, kInset = 24;
constexpr double kHueKeyStep = 10;  // degrees per Left or Right on the focused bar

struct PickerRects {
  Rect box, bar, slider, swatch, cancel, ok;
};

PickerRects pickerRects(const Ctx& ctx) {
  PickerRects p;
  const double w = std::min(ctx.width - 64, kBoxMaxW);
  p.box = Rect{(ctx.width - w) * 0.5, (ctx.height - kBoxH) * 0.5, w, kBoxH};
  const double x = p.box.x + kInset, inner = w - 2 * kInset;
  p.bar = Rect{x, p.box.y + 60, inner, 34};
  p.slider = Rect{x, p.box.y + 136, inner, 24};
  p.swatch = Rect{x, p.box.y + 176, inner, 44};
  const double bw = (w - 64) * 0.5, by = p.box.y + kBoxH - 64;
  p.cancel = Rect{x, by, bw, 44};
  p.ok = Rect{x + bw + 16, by, bw, 44};
  return p;
}

void followHueBar(Ctx& ctx, const Rect& bar, ColorPickerState& state) {
  traceWidget("hue", bar);
  state.hue = std::clamp(state.hue + kHueKeyStep * focusSlide(ctx, bar), 0.0, 360.0);
  // A quick click can press and let go within one frame: it still counts.
  if (ctx.in.mousePressed && ctx.hover(bar)) state.draggingHue = true;
  if (state.draggingHue) {
    state.hue = hueAt(bar, ctx.in.mouseX);
    ctx.clickTaken = true;
  }
  if (!ctx.in.mouseDown) state.draggingHue = false;
}

// The fully saturated hues change linearly between multiples of 60 degrees,
// so a gradient with a stop at each draws the bar exactly in one fill.
void drawHueBar(cairo_t* cr, const Rect& bar, double hue) {
  cairo_pattern_t* ramp = cairo_pattern_create_linear(bar.x, 0, bar.x + bar.w, 0);
  for (int deg = 0; deg <= 360; deg += 60) {
    const uint32_t c = hslColor(deg, 0.5, 1.0);
    cairo_pattern_add_color_stop_rgb(ramp, deg / 360.0, (c >> 16) / 255.0, ((c >> 8) & 255) / 255.0, (c & 255) / 255.0);
  }
  roundedRectPath(cr, bar, 4);
  cairo_set_source(cr, ramp);
  cairo_fill(cr);
  cairo_pattern_destroy(ramp);
  strokeRoundedRect(cr, bar, 4, 1.0, kColorBorder, 1.0);
  const double mx = bar.x + bar.w * hue / 360;
  drawLine(cr, mx, bar.y - 3, mx, bar.y + bar.h + 3, 2, 0xffffff, 1.0);
}

}  // namespace

uint32_t hslColor(double hue, double lightness, double saturation) {
  const double a = saturation * std::min(lightness, 1 - lightness);
  uint32_t rgb = 0;
  for (double n : {0.0, 8.0, 4.0}) {
    const double k = std::fmod(n + hue / 30, 12);
    const double v = lightness - a * std::clamp(std::min(k - 3, 9 - k), -1.0, 1.0);
    rgb = rgb << 8 | static_cast<uint32_t>(std::lround(std::clamp(v * 255, 0.0, 255.0)));
  }
  return rgb;
}

uint32_t pickerColor(double hue, double lightness) {
  return hslColor(hue, std::clamp(lightness, kMinLightness, kMaxLightness), kSaturation);
}

double hueAt(const Rect& bar, double px) {
  if (bar.w <= 0) return 0;
  return std::clamp((px - bar.x) / bar.w * 360, 0.0, 360.0);
}

PickerResult colorPicker(Ctx& ctx, const std::string& title, ColorPickerState& state) {
  const PickerRects p = pickerRects(ctx);
  followHueBar(ctx, p.bar, state);

  cairo_t* cr = ctx.cr;
  modalBox(ctx, p.box);
  drawTextCentered(cr, p.box.x + p.box.w * 0.5, p.box.y + 32, title, labelStyle(18, true, kColorAccent, p.bar.w));
  drawHueBar(cr, p.bar, state.hue);
  drawText(cr, p.bar.x, p.box.y + 110, i18n::tr("settings.brightness"), labelStyle(13, false, kColorMuted, p.bar.w));
  state.lightness = std::clamp(slider(ctx, p.slider, state.lightness), 0.0, 1.0);
  drawBox(cr, p.swatch, 8, BoxLook{pickerColor(state.hue, state.lightness), 1.0, kColorBorder, 1.0});
  const bool cancel = plainButton(ctx, p.cancel, i18n::tr("common.cancel"), false);
  const bool ok = plainButton(ctx, p.ok, i18n::tr("common.ok"), true);
  ctx.clickTaken = true;

  if (cancel || ctx.in.hasKey(SDLK_ESCAPE)) return PickerResult::Cancelled;
  if (ok || ctx.in.hasKey(SDLK_RETURN) || ctx.in.hasKey(SDLK_RETURN2) || ctx.in.hasKey(SDLK_KP_ENTER)) {
    return PickerResult::Chosen;
  }
  return PickerResult::Open;
}

}  // namespace ui
