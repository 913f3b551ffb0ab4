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
#include "ui/widgets/trace.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr int32_t kKeyReturn = 13;
constexpr int32_t kKeyReturn2 = 0x4000009E;  // the second Return key some keyboards have
constexpr int32_t kKeyKeypadEnter = 0x40000058;
constexpr int32_t kKeyEscape = 27;

constexpr double kBoxMaxW = 360, kBoxH = 220;
constexpr double kButtonH = 46;
constexpr double kTextInset = 24;  // on each side of title and message
constexpr int kTitleLines = 2, kMessageLines = 3;

TextStyle titleStyle() { return labelStyle(20, true, kColorAccent, 0); }
TextStyle messageStyle() { return labelStyle(15, false, kColorText, 0); }

// The box is sized for a one-line title and message; every further line of
// either makes it taller by that line, and the buttons move down with it.
// The box stays centred in the window.
struct DialogRects {
  Rect box, cancel, confirm;
  double titleY = 0, messageY = 0;  // centres of the two text blocks
};

double extraLines(const ParagraphFit& fit) {
  return fit.lines > 1 ? fit.height * (fit.lines - 1) / fit.lines : 0;
}

DialogRects dialogRects(const Ctx& ctx, const std::string& title, const std::string& message, bool single) {
  DialogRects d;
  const double w = std::min(ctx.width - 64, kBoxMaxW);
  const double textW = w - 2 * kTextInset;
  const double titleExtra = extraLines(fitParagraph(ctx.cr, title, titleStyle(), textW, kTitleLines));
  const double messageExtra = extraLines(fitParagraph(ctx.cr, message, messageStyle(), textW, kMessageLines));
  const double h = kBoxH + titleExtra + messageExtra;
  d.box = Rect{(ctx.width - w) * 0.5, (ctx.height - h) * 0.5, w, h};
  d.titleY = d.box.y + 40 + titleExtra * 0.5;
  d.messageY = d.box.y + 100 + titleExtra + messageExtra * 0.5;
  const double bw = (w - 60) * 0.5;
  const double by = d.box.y + h - 66;
  d.cancel = Rect{d.box.x + 20, by, bw, kButtonH};
  d.confirm = Rect{d.cancel.x + bw + 20, by, bw, kButtonH};
  if (single) {
    d.confirm.x = d.box.x + (w - bw) * 0.5;
    d.cancel = Rect{};
  }
  return d;
}

int decide(Ctx& ctx, const DialogRects& d, const std::string& confirmLabel, const std::string& cancelLabel) {
  int click = 0;
  if (!cancelLabel.empty() && pressWidget(ctx, d.cancel, cancelLabel)) {
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

void modalBox(Ctx& ctx, const Rect& box) {
  fillRect(ctx.cr, Rect{0, 0, ctx.width, ctx.height}, 0x000000, 0.7);
  drawBox(ctx.cr, box, 18, BoxLook{kColorPanel, 1.0, kColorBorder, 1.0});
}

int confirmDialog(Ctx& ctx, const std::string& title, const std::string& message, const std::string& confirmLabel,
                  const std::string& cancelLabel) {
  const DialogRects d = dialogRects(ctx, title, message, cancelLabel.empty());
  const int result = decide(ctx, d, confirmLabel, cancelLabel);

  cairo_t* cr = ctx.cr;
  modalBox(ctx, d.box);
  const double cx = d.box.x + d.box.w * 0.5;
  const double textW = d.box.w - 2 * kTextInset;
  drawTextWrapped(cr, cx, d.titleY, title, titleStyle(), textW, kTitleLines);
  drawTextWrapped(cr, cx, d.messageY, message, messageStyle(), textW, kMessageLines);
  traceWidget(message, d.box);
  if (!cancelLabel.empty()) {
    drawDialogButton(ctx, d.cancel, cancelLabel,
                     BoxLook{kColorBackground, ctx.hover(d.cancel) ? 1.0 : 0.9, kColorBorder, 1.0}, kColorText);
  }
  drawDialogButton(ctx, d.confirm, confirmLabel, BoxLook{kColorAccent, ctx.hover(d.confirm) ? 1.0 : 0.92, 0, 0},
                   kColorBackground);
  return result;
}

}  // namespace ui
