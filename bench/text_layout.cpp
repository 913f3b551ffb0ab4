// What a line of text costs through the game's one reused layout, against
// building a layout and font description for every string (the baseline).
// Usage: bench_text_layout [runs] [frames]; fonts from the asset tree.
#include <pango/pangocairo.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "i18n/i18n.h"
#include "ui/text.h"

namespace {

const char* const kLabels[] = {"menu.continue", "menu.levelSelect", "menu.newPuzzle", "menu.gallery",
                               "menu.settings", "menu.about",       "menu.quit",      "app.tagline"};

// Microseconds per string, median of `runs` runs of `frames` frames.
double median(int runs, int frames, const std::function<void(int)>& drawFrame) {
  std::vector<double> us;
  for (int r = 0; r < runs; ++r) {
    const auto start = std::chrono::steady_clock::now();
    for (int f = 0; f < frames; ++f) drawFrame(f);
    const double total = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
    us.push_back(total / (frames * static_cast<double>(std::size(kLabels))));
  }
  std::sort(us.begin(), us.end());
  return us[us.size() / 2];
}

struct LayoutDeleter {
  void operator()(PangoLayout* l) const { g_object_unref(l); }
};
struct FontDeleter {
  void operator()(PangoFontDescription* d) const { pango_font_description_free(d); }
};

// Lays out (and, when `draw` is set, draws) one string the naive way.
void freshLayout(cairo_t* cr, const std::string& text, const ui::TextStyle& style, bool draw) {
  std::unique_ptr<PangoLayout, LayoutDeleter> layout(pango_cairo_create_layout(cr));
  std::unique_ptr<PangoFontDescription, FontDeleter> font(pango_font_description_from_string(style.family));
  pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
  pango_font_description_set_weight(font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_layout_set_font_description(layout.get(), font.get());
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  int w = 0, h = 0;
  pango_layout_get_size(layout.get(), &w, &h);
  if (!draw) return;
  cairo_move_to(cr, 100, 100);
  pango_cairo_show_layout(cr, layout.get());
}

}  // namespace

int main(int argc, char** argv) {
  const int runs = argc > 1 ? std::atoi(argv[1]) : 7;
  const int frames = argc > 2 ? std::atoi(argv[2]) : 300;
  ui::registerBundledFonts();
  i18n::setLanguage("de");
  std::vector<std::string> texts;
  for (const char* key : kLabels) texts.push_back(i18n::tr(key));

  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1280, 800);
  // A new context every frame, as the frame loop makes one.
  auto perFrame = [&](const std::function<void(cairo_t*, size_t)>& draw) {
    return [&, draw](int) {
      cairo_t* cr = cairo_create(surface);
      for (size_t i = 0; i < texts.size(); ++i) draw(cr, i);
      cairo_destroy(cr);
    };
  };
  ui::TextStyle style;
  style.size = 18;
  style.bold = true;
  style.maxWidth = 296;
  const double reused = median(runs, frames, perFrame([&](cairo_t* cr, size_t i) {
    ui::drawText(cr, 640, 100 + 60 * i, texts[i], style);
  }));
  const double alternating = median(runs, frames, perFrame([&](cairo_t* cr, size_t i) {
    ui::TextStyle s = style;
    s.bold = i % 2 == 0;
    ui::drawText(cr, 640, 100 + 60 * i, texts[i], s);
  }));
  const double fresh =
      median(runs, frames, perFrame([&](cairo_t* cr, size_t i) { freshLayout(cr, texts[i], style, true); }));
  double w = 0, h = 0;
  const double measured = median(runs, frames, perFrame([&](cairo_t* cr, size_t i) {
    ui::measureText(cr, texts[i], style, &w, &h);
  }));
  const double measuredFresh =
      median(runs, frames, perFrame([&](cairo_t* cr, size_t i) { freshLayout(cr, texts[i], style, false); }));
  cairo_surface_destroy(surface);

  std::printf("| case | µs per string | vs. fresh layout |\n|---|---|---|\n");
  std::printf("| drawn, reused layout, one style | %.1f | %.2f |\n", reused, reused / fresh);
  std::printf("| drawn, reused layout, style alternating | %.1f | %.2f |\n", alternating, alternating / fresh);
  std::printf("| drawn, fresh layout and font per string | %.1f | 1.00 |\n", fresh);
  std::printf("| measured, reused layout | %.1f | %.2f |\n", measured, measured / measuredFresh);
  std::printf("| measured, fresh layout and font per string | %.1f | 1.00 |\n", measuredFresh);
  return 0;
}
