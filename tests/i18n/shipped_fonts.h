// Fixture for tests that lay catalogue texts out in the shipped fonts alone:
// fontconfig knows the three bundled files and nothing else.
#pragma once
#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <memory>
#include <string>

#include "i18n/i18n.h"
#include "tests/support/font_support.h"
#include "ui/text.h"

namespace i18ntest {

struct ShippedFonts : ::testing::Test {
  void SetUp() override {
    testsupport::useShippedAssets();
    testsupport::isolateFonts();
    ASSERT_TRUE(ui::registerBundledFonts()) << "a font is missing below " << testsupport::shippedAssetRoot();
  }
};

// A text with every placeholder filled the way the screens fill it.
inline std::string filled(const std::string& key) {
  return i18n::tr(key, {{"count", "110"}, {"prev", "3"}, {"level", "4"}, {"time", "1:02:03"}});
}

// A pango layout in the interface's font family, and a context to measure in.
class Layout {
 public:
  Layout(double size, bool bold) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8);
    cr_.reset(cairo_create(surface));
    cairo_surface_destroy(surface);  // the context keeps it alive
    layout_.reset(pango_cairo_create_layout(cr_.get()));
    PangoFontDescription* font = pango_font_description_from_string(ui::kUiFontFamily);
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_font_description_set_weight(font, bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout_.get(), font);
    pango_font_description_free(font);
  }
  cairo_t* cr() const { return cr_.get(); }
  PangoLayout* set(const std::string& text) {
    pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
    return layout_.get();
  }

 private:
  std::unique_ptr<cairo_t, void (*)(cairo_t*)> cr_{nullptr, cairo_destroy};
  std::unique_ptr<PangoLayout, void (*)(gpointer)> layout_{nullptr, g_object_unref};
};

}  // namespace i18ntest
