// One line in each of the 22 languages, drawn by the game's text functions on
// a real window of a private X server and read back from the renderer. Set
// TESSELLATRIX_SCREENSHOT_DIR to keep the picture ("languages.png") for a
// person to look at: wrong glyphs, clipping and direction show there.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "tests/i18n/shipped_fonts.h"
#include "tests/support/test_support.h"
#include "ui/frame_layer.h"
#include "ui/gpu.h"

namespace {

constexpr int kWidth = 900;
constexpr int kLineHeight = 34;
constexpr int kHeight = 22 * kLineHeight + 16;
constexpr uint32_t kBackground = 0x0e1320;

std::string sampleLine(const i18n::Language& lang) {
  i18n::setLanguage(lang.code);
  return lang.nativeName + "  ·  " + i18n::tr("menu.newPuzzle") + "  ·  " +
         i18n::tr("difficulty.pieces", {{"count", "42"}}) + "  ·  " + i18n::tr("solved.title");
}

// Draws every language's line; right-to-left lines hang from the right edge,
// as the screens mirror them.
void drawLines(cairo_t* cr) {
  ui::TextStyle style;
  style.size = 18;
  double y = 8;
  for (const i18n::Language& lang : i18n::languages()) {
    style.align = lang.rtl ? ui::kAlignRight : ui::kAlignLeft;
    ui::drawText(cr, lang.rtl ? kWidth - 16 : 16, y, sampleLine(lang), style);
    y += kLineHeight;
  }
}

bool writePng(const std::vector<uint32_t>& pixels, const std::string& path) {
  std::vector<uint32_t> copy(pixels);
  cairo_surface_t* s = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(copy.data()),
                                                           CAIRO_FORMAT_RGB24, kWidth, kHeight, kWidth * 4);
  const bool ok = cairo_surface_write_to_png(s, path.c_str()) == CAIRO_STATUS_SUCCESS;
  cairo_surface_destroy(s);
  return ok;
}

class Screenshot : public i18ntest::ShippedFonts {
 protected:
  void TearDown() override {
    if (renderer) {
      ui::gpuShutdown();
      layer.release();
      SDL_DestroyRenderer(renderer);
    }
    if (window) SDL_DestroyWindow(window);
    SDL_Quit();
  }
  // Declared first so the X server outlives the window: Xlib ends the
  // process when its display goes away under it.
  testsupport::XServer x{kWidth + 100, kHeight + 100};
  testsupport::ScopedEnv display{"DISPLAY", x.display()};
  testsupport::ScopedEnv driver{"SDL_VIDEODRIVER", "x11"};
  SDL_Window* window = nullptr;
  SDL_Renderer* renderer = nullptr;
  ui::FrameLayer layer;
};

TEST_F(Screenshot, OneLineInEachLanguageOnARealWindow) {
  ASSERT_TRUE(x.ok()) << "Xvfb did not start";
  ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
  window = SDL_CreateWindow("languages", 0, 0, kWidth, kHeight, SDL_WINDOW_SHOWN);
  ASSERT_NE(window, nullptr) << SDL_GetError();
  renderer = SDL_CreateRenderer(window, -1, 0);
  ASSERT_NE(renderer, nullptr) << SDL_GetError();
  ui::gpuInit(renderer);
  layer.ensure(renderer, kWidth, kHeight);
  SDL_SetRenderDrawColor(renderer, (kBackground >> 16) & 255, (kBackground >> 8) & 255, kBackground & 255, 255);
  SDL_RenderClear(renderer);
  drawLines(layer.begin(1.0));
  layer.finishDrawing();
  layer.composite(renderer);
  std::vector<uint32_t> pixels(kWidth * kHeight);
  ASSERT_EQ(SDL_RenderReadPixels(renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(), kWidth * 4), 0);
  SDL_RenderPresent(renderer);

  testsupport::TempDir tmp;
  const char* keep = std::getenv("TESSELLATRIX_SCREENSHOT_DIR");
  EXPECT_TRUE(writePng(pixels, (keep && *keep ? std::string(keep) : tmp.path()) + "/languages.png"));

  // Each line inks its own band, from the left edge or, right to left, from
  // the right edge, and nothing is cut off at the far side.
  const auto& langs = i18n::languages();
  for (size_t i = 0; i < langs.size(); ++i) {
    int lo = kWidth, hi = -1;
    for (int y = 8 + static_cast<int>(i) * kLineHeight; y < 8 + static_cast<int>(i + 1) * kLineHeight; ++y) {
      for (int xx = 0; xx < kWidth; ++xx) {
        if ((pixels[y * kWidth + xx] & 0xffffff) != kBackground) {
          lo = std::min(lo, xx);
          hi = std::max(hi, xx);
        }
      }
    }
    ASSERT_GE(hi, 0) << langs[i].code << " drew nothing";
    if (langs[i].rtl) {
      EXPECT_GE(hi, kWidth - 20) << langs[i].code;
      EXPECT_GT(lo, 16) << langs[i].code;
    } else {
      EXPECT_LE(lo, 20) << langs[i].code;
      EXPECT_LT(hi, kWidth - 16) << langs[i].code;
    }
  }
}

}  // namespace
