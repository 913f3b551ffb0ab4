// Fixture for tests that lay catalogue texts out in the shipped fonts alone:
// fontconfig knows the three bundled files and nothing else.
#pragma once

#include <cairo.h>
#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <memory>
#include <string>

#include "i18n/i18n.h"
#include "platform/fs.h"
#include "tests/support/font_support.h"
#include "ui/text.h"

namespace i18ntest {

class ShippedFonts : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string cjk = testsupport::shippedAssetRoot() + "/assets/fonts/QuillmossPuzzleCJK.ttf";
    ASSERT_TRUE(platform::fs::isFile(cjk)) << "the CJK font is missing from the asset tree";
    testsupport::useShippedAssets();
    testsupport::isolateFonts();
    ASSERT_TRUE(ui::registerBundledFonts());
  }
};

// A text with every placeholder filled the way the screens fill it.
inline std::string filled(const std::string& key) {
  return i18n::tr(key, {{"count", "110"}, {"prev", "3"}, {"level", "4"}, {"time", "1:02:03"}});
}

// A pango layout in the interface's font family, owned with its surface.
class Layout {
 public:
  Layout(double size, bool bold)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8)),
        cr_(cairo_create(surface_.get())),
        layout_(pango_cairo_create_layout(cr_.get())) {
    std::unique_ptr<PangoFontDescription, FontDeleter> font(pango_font_description_from_string(ui::kUiFontFamily));
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(font.get(), bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout_.get(), font.get());
  }
  cairo_t* cr() const { return cr_.get(); }
  PangoLayout* set(const std::string& text) {
    pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
    return layout_.get();
  }

 private:
  struct SurfaceDeleter {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
  };
  struct ContextDeleter {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
  };
  struct LayoutDeleter {
    void operator()(PangoLayout* l) const { g_object_unref(l); }
  };
  struct FontDeleter {
    void operator()(PangoFontDescription* d) const { pango_font_description_free(d); }
  };
  std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface_;
  std::unique_ptr<cairo_t, ContextDeleter> cr_;
  std::unique_ptr<PangoLayout, LayoutDeleter> layout_;
};

}  // namespace i18ntest
