// The confirmation dialog is modal by construction: the screen calls it
// before anything beneath it, and it takes the frame's click whatever the
// click hits, so nothing under the dim layer reacts.
//
//   input this frame                  result
//   click on confirm                   1
//   click on cancel                   -1
//   click elsewhere in the box         0
//   click outside the box             -1
//   Return (either key) / keypad Enter 1   unless a cancel comes in the same frame
//   Escape                            -1   always
//
// A cancel in the same frame as a confirm wins: the dialogs guard resets
// and restarts, so two contradicting inputs leave things as they are.
#include "ui/widgets/dialog.h"

#include <algorithm>

#include "audio/audio.h"
#include "ui/draw.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr int32_t kKeyReturn = 13;
constexpr int32_t kKeyReturn2 = 0x4000009E;  // the second Return key some keyboards have
constexpr int32_t kKeyKeypadEnter = 0x40000058;
constexpr int32_t kKeyEscape = 27;

constexpr double kBoxMaxW = 360, kBoxH = 220;
constexpr double kButtonH = 46;

struct DialogRects {
  Rect box, cancel, confirm;
};

DialogRects dialogRects(const Ctx& ctx) {
  DialogRects d;
  const double w = std::min(ctx.width - 64, kBoxMaxW);
  d.box = Rect{(ctx.width - w) * 0.5, (ctx.height - kBoxH) * 0.5, w, kBoxH};
  const double bw = (w - 60) * 0.5;
  const double by = d.box.y + kBoxH - 66;
  d.cancel = Rect{d.box.x + 20, by, bw, kButtonH};
  d.confirm = Rect{d.cancel.x + bw + 20, by, bw, kButtonH};
  return d;
}

int decide(Ctx& ctx, const DialogRects& d, const std::string& confirmLabel, const std::string& cancelLabel) {
  int click = 0;
  if (pressWidget(ctx, d.cancel, cancelLabel)) {
    click = -1;
  } else if (pressWidget(ctx, d.confirm, confirmLabel)) {
    click = 1;
  } else if (ctx.in.mouseReleased && !ctx.clickTaken && !ctx.hover(d.box)) {
    audio::play(audio::Sfx::Click);
    click = -1;
  }
  ctx.clickTaken = true;

  if (ctx.in.hasKey(kKeyEscape) || click < 0) return -1;
  if (click > 0 || ctx.in.hasKey(kKeyReturn) || ctx.in.hasKey(kKeyReturn2) ||
      ctx.in.hasKey(kKeyKeypadEnter)) {
    return 1;
  }
  return 0;
}

void drawDialogButton(Ctx& ctx, const Rect& r, const std::string& label, const BoxLook& look, uint32_t text) {
  drawBox(ctx.cr, r, 12, look);
  drawLabel(ctx.cr, r, label, labelStyle(15, true, text, r.w - 16));
}

}  // namespace

int confirmDialog(Ctx& ctx, const std::string& title, const std::string& message, const std::string& confirmLabel,
                  const std::string& cancelLabel) {
  const DialogRects d = dialogRects(ctx);
  const int result = decide(ctx, d, confirmLabel, cancelLabel);

  cairo_t* cr = ctx.cr;
  fillRect(cr, Rect{0, 0, ctx.width, ctx.height}, 0x000000, 0.7);
  drawBox(cr, d.box, 18, BoxLook{kColorPanel, 1.0, kColorBorder, 1.0});
  const double cx = d.box.x + d.box.w * 0.5;
  const double textW = d.box.w - 48;
  drawTextCentered(cr, cx, d.box.y + 40, title, labelStyle(20, true, kColorAccent, textW));
  drawTextWrapped(cr, cx, d.box.y + 100, message, labelStyle(15, false, kColorText, 0), textW);
  drawDialogButton(ctx, d.cancel, cancelLabel,
                   BoxLook{kColorBackground, ctx.hover(d.cancel) ? 1.0 : 0.9, kColorBorder, 1.0}, kColorText);
  drawDialogButton(ctx, d.confirm, confirmLabel, BoxLook{kColorAccent, ctx.hover(d.confirm) ? 1.0 : 0.92, 0, 0},
                   kColorBackground);
  return result;
}

}  // namespace ui
