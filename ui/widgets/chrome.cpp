#include "ui/widgets/chrome.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "i18n/i18n.h"
#include "platform/app_info.h"
#include "ui/widgets/look.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kBackW = 130, kBackH = 34;
constexpr double kCharGap = 2;  // between the characters of the wavy title

// Bytes of the UTF-8 character that starts with `lead`; a stray continuation
// byte counts as a two-byte character, so broken text still advances.
size_t utf8Length(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return 4;
}

std::vector<std::string> utf8Characters(const std::string& text) {
  std::vector<std::string> chars;
  for (size_t i = 0; i < text.size();) {
    const size_t n = std::min(utf8Length(static_cast<unsigned char>(text[i])), text.size() - i);
    chars.push_back(text.substr(i, n));
    i += n;
  }
  return chars;
}

}  // namespace

Rect backButtonRect(const Ctx& ctx) {
  const double margin = largeLayout(ctx) ? 16 : 12;
  return Rect{margin, margin, kBackW, kBackH};
}

bool backButton(Ctx& ctx) {
  const Rect r = backButtonRect(ctx);
  const std::string label = "\u2039 " + i18n::tr("common.back");
  const bool hovered = ctx.hover(r);
  const bool clicked = pressWidget(ctx, r, label) || ctx.in.hasKey(SDLK_ESCAPE);

  TextStyle style = labelStyle(16, false, kColorAccent, r.w);
  style.alpha = hovered ? 1.0 : 0.9;
  drawText(ctx.cr, r.x, r.y + 6, label, style);
  return clicked;
}

double screenHeader(Ctx& ctx, const std::string& title, bool* backClicked) {
  const bool large = largeLayout(ctx);
  const double height = large ? 60 : 52;
  const bool back = backButton(ctx);
  if (backClicked) *backClicked = back;

  // The title keeps clear of the back button on both sides, so it stays
  // centred on the window.
  const Rect b = backButtonRect(ctx);
  const double room = ctx.width - 2 * (b.x + b.w + 8);
  drawTextCentered(ctx.cr, ctx.width * 0.5, height * 0.5, title, labelStyle(large ? 20 : 18, true, kColorText, room));
  return height;
}

double wavyTitle(Ctx& ctx, double cx, double cy, const std::string& text, double size) {
  const std::vector<std::string> chars = utf8Characters(text);
  if (chars.empty()) return 0;
  const TextStyle style = labelStyle(size, true, kColorAccent, 0);
  std::vector<double> widths(chars.size());
  double total = 0;
  for (size_t i = 0; i < chars.size(); ++i) {
    measureText(ctx.cr, chars[i], style, &widths[i], nullptr);
    total += widths[i] + kCharGap;
  }

  // It never stops waving, unless the player asked for stillness: then it
  // stands as the wave leaves it at time 0.
  if (!ctx.reducedMotion) ctx.requestFrame();
  const double t = ctx.reducedMotion ? 0 : 2 * M_PI * ctx.time;
  double left = cx - total * 0.5;
  for (size_t i = 0; i < chars.size(); ++i) {
    const double phase = 0.45 * static_cast<double>(i);
    if (chars[i] != " ") {
      cairo_save(ctx.cr);
      cairo_translate(ctx.cr, left + widths[i] * 0.5, cy + 0.2 * size * std::sin(t / 2.8 + phase));
      cairo_rotate(ctx.cr, std::sin(0.25 * t + phase) * 6 * M_PI / 180);
      drawTextCentered(ctx.cr, 0, 0, chars[i], style);
      cairo_restore(ctx.cr);
    }
    left += widths[i] + kCharGap;
  }
  return total;
}

void tagline(Ctx& ctx, double cy) {
  const TextStyle style = labelStyle(largeLayout(ctx) ? 16 : 14, false, kColorMuted, ctx.width - 48);
  drawTextCentered(ctx.cr, ctx.width * 0.5, cy, i18n::tr("app.tagline"), style);
}

void footer(Ctx& ctx, double bottom) {
  const TextStyle style = labelStyle(12, false, kColorMuted, ctx.width - 24);
  const double cx = ctx.width * 0.5;
  drawTextCentered(ctx.cr, cx, bottom - 26, i18n::tr("about.year") + " " + i18n::tr("about.company"), style);
  char version[64];
  std::snprintf(version, sizeof version, "v%s Build %d", platform::kAppVersion, platform::kAppBuild);
  drawTextCentered(ctx.cr, cx, bottom - 10, version, style);
}

}  // namespace ui
