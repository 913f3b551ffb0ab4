// Every button runs in the same order: its looks come from the rect, the
// click is asked for (the first widget under the pointer wins it), the button
// is drawn in the state the input left it in, and the click is returned.
#include "ui/widgets/buttons.h"

#include <algorithm>
#include <cstdio>

#include "ui/draw.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"
#include "ui/widgets/trace.h"

namespace ui {

namespace {

struct ChipLook {
  uint32_t fill;
  double fillAlpha;
  uint32_t border;
  double borderWidth;
  uint32_t text;
};

// Index 0 is the plain chip; states 1 to 3 index the rest.
constexpr ChipLook kChipLooks[] = {
    {kColorBackground, 1.0, kColorBorder, 1.0, kColorText},
    {kColorGreen, 0.18, kColorGreen, 1.0, kColorLightGreen},  // solved
    {kColorAccent, 0.08, kColorAccent, 2.0, kColorAccent},    // suggested
    {kColorAccent, 0.3, kColorAccent, 2.0, kColorText},       // in progress
};

constexpr const char* kCheckMark = "\u2713";

const ChipLook& chipLook(ChipState state) { return kChipLooks[state >= 1 && state <= 3 ? state : 0]; }

}  // namespace

bool menuButton(Ctx& ctx, const Rect& r, const std::string& label, bool primary) {
  const bool hovered = ctx.hover(r);
  const bool held = hovered && ctx.in.mouseDown;
  const bool clicked = pressWidget(ctx, r, label);

  const uint32_t fill = primary ? kColorAccent : kColorPanel;
  const uint32_t border = primary ? kColorAccent : kColorBorder;
  const double alpha = held ? 0.7 : 1.0;
  drawBox(ctx.cr, r, 14, BoxLook{fill, alpha, border, 1.0, alpha});
  if (hovered && !held) strokeRoundedRect(ctx.cr, r, 14, 2.0, kColorAccent, 0.55);
  const uint32_t text = primary ? kColorDarkOnAccent : kColorMuted;
  drawLabel(ctx.cr, r, label, labelStyle(std::min(0.42 * r.h, 18.0), true, text, r.w - 24));
  return clicked;
}

bool plainButton(Ctx& ctx, const Rect& r, const std::string& label, bool primary) {
  const bool hovered = ctx.hover(r);
  const bool clicked = pressWidget(ctx, r, label);

  if (primary) {
    drawBox(ctx.cr, r, 12, BoxLook{kColorAccent, 1.0, kColorAccent, 2.0});
  } else {
    drawBox(ctx.cr, r, 12, BoxLook{kColorPanel, hovered ? 1.0 : 0.85, kColorBorder, 1.0});
  }
  drawLabel(ctx.cr, r, label, labelStyle(15, primary, primary ? kColorBackground : kColorText, r.w - 16));
  return clicked;
}

bool letterButton(Ctx& ctx, const Rect& r, const std::string& label, bool disabled) {
  const bool hovered = ctx.hover(r);
  // A disabled button leaves the click to whatever lies beneath it.
  bool clicked = false;
  if (disabled) {
    traceWidget(label, r);
  } else {
    clicked = pressWidget(ctx, r, label);
  }

  if (!disabled && hovered) fillRoundedRect(ctx.cr, r, 8, kColorPanel, 0.9);
  drawLabel(ctx.cr, r, label, labelStyle(18, true, kColorAccent, 0));
  if (disabled) fillRect(ctx.cr, r, kColorBackground, 0.7);
  return clicked;
}

bool difficultyChip(Ctx& ctx, const Rect& r, const std::string& label, ChipState state) {
  const bool hovered = ctx.hover(r);
  const bool clicked = pressWidget(ctx, r, label);

  const ChipLook& look = chipLook(state);
  const double fillAlpha = hovered ? std::min(look.fillAlpha + 0.12, 1.0) : look.fillAlpha;
  drawBox(ctx.cr, r, 8, BoxLook{look.fill, fillAlpha, look.border, look.borderWidth});
  const bool solved = state == 1;
  const Rect labelRect{solved ? r.x - 6 : r.x, r.y, r.w, r.h};
  drawLabel(ctx.cr, labelRect, label, labelStyle(13, true, look.text, r.w - 10));
  if (solved) {
    drawTextCentered(ctx.cr, r.x + r.w - 12, r.y + r.h * 0.5, kCheckMark, labelStyle(13, true, kColorGreen, 0));
  }
  return clicked;
}

bool colorSwatch(Ctx& ctx, const Rect& r, uint32_t rgb, bool selected) {
  char name[24];
  std::snprintf(name, sizeof name, "swatch #%06x", static_cast<unsigned>(rgb & 0xffffff));
  const bool clicked = pressWidget(ctx, r, name);

  drawBox(ctx.cr, r, 8, selected ? BoxLook{rgb, 1.0, kColorAccent, 3.0} : BoxLook{rgb, 1.0, kColorBorder, 1.0});
  return clicked;
}

}  // namespace ui
