#include "ui/gpu.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/support/test_support.h"

namespace {

using testsupport::SoftwareTarget;

uint8_t red(uint32_t p) { return (p >> 16) & 255; }
uint8_t green(uint32_t p) { return (p >> 8) & 255; }
uint8_t blue(uint32_t p) { return p & 255; }

struct PaintLog {
  int calls = 0;
  double r = 1, g = 1, b = 1, a = 1;
};

void paintColour(cairo_t* cr, void* user) {
  auto* log = static_cast<PaintLog*>(user);
  ++log->calls;
  cairo_set_source_rgba(cr, log->r, log->g, log->b, log->a);
  cairo_paint(cr);
}

void countDraw(void* user) { ++*static_cast<int*>(user); }

class GpuLayer : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(target.renderer(), nullptr);
    ::testing::internal::CaptureStderr();
    ui::gpuInit(target.renderer());
    initMessage = ::testing::internal::GetCapturedStderr();
    ui::gpuSetScale(1.0);
    clear();
  }
  void TearDown() override { ui::gpuShutdown(); }
  void clear() {
    SDL_SetRenderDrawColor(target.renderer(), 0, 0, 0, 255);
    SDL_RenderClear(target.renderer());
  }

  SoftwareTarget target{100, 100};
  std::string initMessage;
};

TEST(GpuConversions, AlphaBecomesAByteWithClamping) {
  EXPECT_EQ(ui::alphaByte(1.5), 255);
  EXPECT_EQ(ui::alphaByte(-0.2), 0);
  EXPECT_EQ(ui::alphaByte(0.5), 128);
  EXPECT_EQ(ui::alphaByte(1.0), 255);
  EXPECT_EQ(ui::alphaByte(0.0), 0);
  EXPECT_EQ(ui::alphaByte(0.498), 127);
}

TEST(GpuConversions, EachEdgeIsRoundedOnItsOwn) {
  const SDL_Rect r = ui::toPixels(0.3, 0.3, 0.3, 0.3, 1.0);
  EXPECT_EQ(r.x, 0);
  EXPECT_EQ(r.w, 0) << "width is not derived from rounded edges";
  const SDL_Rect s = ui::toPixels(10.25, 3.5, 20.5, 7.25, 2.0);
  EXPECT_EQ(s.x, 21);
  EXPECT_EQ(s.y, 7);
  EXPECT_EQ(s.w, 41);
  EXPECT_EQ(s.h, 15);
}

TEST(GpuConversions, UnpremultiplyRestoresStraightColour) {
  uint32_t px[4] = {0x80404040u, 0x00000000u, 0xFF336699u, 0x0AC80000u};
  ui::unpremultiply(reinterpret_cast<unsigned char*>(px), 4, 1, sizeof px);
  EXPECT_EQ(px[0], 0x80808080u);
  EXPECT_EQ(px[1], 0x00000000u) << "fully transparent stays as it is";
  EXPECT_EQ(px[2], 0xFF336699u) << "opaque stays as it is";
  EXPECT_EQ(px[3], 0x0AFF0000u) << "out-of-range input is clamped, not wrapped";
}

TEST(GpuConversions, UnpremultiplyHonoursTheStride) {
  uint32_t px[2][3] = {{0x80404040u, 0x80404040u, 0x80404040u}, {0x80404040u, 0x80404040u, 0x80404040u}};
  ui::unpremultiply(reinterpret_cast<unsigned char*>(px), 2, 2, 3 * sizeof(uint32_t));
  EXPECT_EQ(px[0][1], 0x80808080u);
  EXPECT_EQ(px[0][2], 0x80404040u) << "padding beyond the width is untouched";
  EXPECT_EQ(px[1][1], 0x80808080u);
}

TEST_F(GpuLayer, SoftwareRendererFallsBackToStraightAlphaWithAMessage) {
  EXPECT_FALSE(ui::gpuPremultiplied());
  EXPECT_EQ(ui::gpuBlendMode(), SDL_BLENDMODE_BLEND);
  EXPECT_EQ(initMessage, "[gpu] kein vormultipliziertes Mischen \xE2\x80\x94 nehme das normale\n");
  EXPECT_EQ(ui::gpuRenderer(), target.renderer());
}

TEST_F(GpuLayer, ScaleMustBePositive) {
  ui::gpuSetScale(2.5);
  EXPECT_EQ(ui::gpuScale(), 2.5);
  ui::gpuSetScale(0);
  EXPECT_EQ(ui::gpuScale(), 1.0);
  ui::gpuSetScale(-3);
  EXPECT_EQ(ui::gpuScale(), 1.0);
}

TEST_F(GpuLayer, FillsCountDrawCallsAndEmptyFillsDrawNothing) {
  ui::gpuBeginFrame();
  ui::gpuFillRect(10, 10, 0, 5, 0xffffff, 1.0);
  ui::gpuFillRect(10, 10, 5, -1, 0xffffff, 1.0);
  EXPECT_EQ(ui::gpuDrawCalls(), 0);
  EXPECT_EQ(target.pixel(10, 10) & 0xffffff, 0u);
  ui::gpuFillRect(10, 10, 5, 5, 0x336699, 1.0);
  EXPECT_EQ(ui::gpuDrawCalls(), 1);
  EXPECT_EQ(target.pixel(12, 12) & 0xffffff, 0x336699u);
  ui::gpuBeginFrame();
  EXPECT_EQ(ui::gpuDrawCalls(), 0);
}

TEST_F(GpuLayer, LogicalUnitsAreMultipliedByTheScale) {
  ui::gpuSetScale(2.0);
  ui::gpuFillRect(10, 10, 5, 5, 0xffffff, 1.0);
  EXPECT_EQ(target.pixel(20, 20) & 0xffffff, 0xffffffu);
  EXPECT_EQ(target.pixel(29, 29) & 0xffffff, 0xffffffu);
  EXPECT_EQ(target.pixel(30, 30) & 0xffffff, 0u);
  EXPECT_EQ(target.pixel(19, 19) & 0xffffff, 0u);
}

TEST_F(GpuLayer, StrokeDrawsAOnePixelOutline) {
  ui::gpuStrokeRect(10, 10, 10, 10, 0xff0000, 1.0);
  EXPECT_EQ(target.pixel(10, 15) & 0xffffff, 0xff0000u);
  EXPECT_EQ(target.pixel(19, 15) & 0xffffff, 0xff0000u);
  EXPECT_EQ(target.pixel(15, 15) & 0xffffff, 0u);
}

TEST_F(GpuLayer, ClipIsASingleRectangleUntilCleared) {
  ui::gpuSetClip(0, 0, 50, 100);
  ui::gpuSetClip(50, 0, 50, 100);  // replaces, does not intersect
  ui::gpuFillRect(0, 0, 100, 100, 0x00ff00, 1.0);
  EXPECT_EQ(target.pixel(25, 50) & 0xffffff, 0u);
  EXPECT_EQ(target.pixel(75, 50) & 0xffffff, 0x00ff00u);
  ui::gpuClearClip();
  ui::gpuFillRect(0, 0, 100, 100, 0x0000ff, 1.0);
  EXPECT_EQ(target.pixel(25, 50) & 0xffffff, 0x0000ffu);
}

TEST_F(GpuLayer, HalfTransparentTexturesLookTheSameAsWithPremultipliedBlending) {
  PaintLog white;
  white.a = 0.5;  // cairo stores this premultiplied: 0x80808080
  SDL_Texture* tex = ui::gpuTexture("half-white", 10, 10, paintColour, &white);
  ASSERT_NE(tex, nullptr);
  ui::gpuBlit(tex, 0, 0, 10, 10, 1.0);
  // White at half coverage over black is mid grey; blending the premultiplied
  // texel as if it were straight would give a quarter (64).
  EXPECT_NEAR(red(target.pixel(5, 5)), 128, 2);
}

TEST_F(GpuLayer, BlitAlphaFadesWithoutDarkeningTwice) {
  PaintLog white;
  SDL_Texture* tex = ui::gpuTexture("white", 10, 10, paintColour, &white);
  ui::gpuBlit(tex, 0, 0, 10, 10, 0.5);
  EXPECT_NEAR(green(target.pixel(5, 5)), 128, 2);
  ui::gpuBlit(tex, 20, 0, 10, 10, 1.0);
  EXPECT_EQ(green(target.pixel(25, 5)), 255);
}

TEST_F(GpuLayer, RotatedBlitTurnsClockwiseAboutTheCentre) {
  struct Halves {
    static void paint(cairo_t* cr, void*) {
      cairo_set_source_rgb(cr, 1, 0, 0);
      cairo_rectangle(cr, 0, 0, 20, 10);
      cairo_fill(cr);
      cairo_set_source_rgb(cr, 0, 0, 1);
      cairo_rectangle(cr, 20, 0, 20, 10);
      cairo_fill(cr);
    }
  };
  SDL_Texture* tex = ui::gpuTexture("halves", 40, 10, Halves::paint, nullptr);
  ui::gpuBeginFrame();
  ui::gpuBlitRotated(tex, 50, 50, 40, 10, 90, 1.0);
  EXPECT_EQ(ui::gpuDrawCalls(), 1);
  // A clockwise quarter turn puts the left (red) half on top.
  EXPECT_EQ(red(target.pixel(50, 40)), 255);
  EXPECT_EQ(blue(target.pixel(50, 60)), 255);
  EXPECT_EQ(target.pixel(35, 50) & 0xffffff, 0u) << "nothing is left where the unturned quad lay";
}

TEST_F(GpuLayer, ACachedKeyIsPaintedOnceAndRepaintedForANewSize) {
  PaintLog log;
  SDL_Texture* first = ui::gpuTexture("k", 8, 8, paintColour, &log);
  SDL_Texture* again = ui::gpuTexture("k", 8, 8, paintColour, &log);
  EXPECT_EQ(first, again);
  EXPECT_EQ(log.calls, 1);
  SDL_Texture* resized = ui::gpuTexture("k", 16, 8, paintColour, &log);
  EXPECT_EQ(log.calls, 2);
  int w = 0;
  SDL_QueryTexture(resized, nullptr, nullptr, &w, nullptr);
  EXPECT_EQ(w, 16);
  EXPECT_EQ(ui::gpuCacheSize(), 1u);
}

TEST_F(GpuLayer, TexturesArePaintedInLogicalUnits) {
  struct Corner {
    static void paint(cairo_t* cr, void*) {
      cairo_set_source_rgb(cr, 1, 1, 1);
      cairo_rectangle(cr, 0, 0, 5, 5);  // logical: a quarter of a 10 x 10 texture
      cairo_fill(cr);
    }
  };
  ui::gpuSetScale(2.0);
  SDL_Texture* tex = ui::gpuTexture("corner", 20, 20, Corner::paint, nullptr);
  ui::gpuBlit(tex, 0, 0, 10, 10, 1.0);
  EXPECT_EQ(red(target.pixel(9, 9)), 255);
  EXPECT_EQ(red(target.pixel(10, 10)), 0);
}

TEST_F(GpuLayer, InvalidRequestsGiveNullAndCacheNothing) {
  PaintLog log;
  EXPECT_EQ(ui::gpuTexture("zero", 0, 5, paintColour, &log), nullptr);
  EXPECT_EQ(ui::gpuRenderTarget("zero", 5, 0, countDraw, &log.calls, false), nullptr);
  EXPECT_EQ(log.calls, 0);
  EXPECT_EQ(ui::gpuCacheSize(), 0u);
  ui::gpuShutdown();
  EXPECT_EQ(ui::gpuTexture("late", 4, 4, paintColour, &log), nullptr);
  ui::gpuFillRect(0, 0, 10, 10, 0xffffff, 1.0);  // a silent no-op
  EXPECT_EQ(ui::gpuDrawCalls(), 0);
}

TEST_F(GpuLayer, RenderTargetsRedrawOnlyWhenAsked) {
  int draws = 0;
  SDL_Texture* t = ui::gpuRenderTarget("rt", 8, 8, countDraw, &draws, false);
  ASSERT_NE(t, nullptr);
  EXPECT_EQ(draws, 1);
  EXPECT_EQ(ui::gpuRenderTarget("rt", 8, 8, countDraw, &draws, false), t);
  EXPECT_EQ(draws, 1);
  EXPECT_EQ(ui::gpuRenderTarget("rt", 8, 8, countDraw, &draws, true), t);
  EXPECT_EQ(draws, 2);
  EXPECT_TRUE(ui::gpuCached("rt"));
}

// 901 entries are kept; the next new key first evicts a third of them, the
// least recently used first and, on equal last use, in key order. Render
// targets keep the frame they were made in, even when reused later.
TEST_F(GpuLayer, OverTheBoundTheLeastRecentlyUsedThirdIsEvicted) {
  PaintLog log;
  char key[16];
  ui::gpuBeginFrame();  // frame 1
  for (int i = 0; i < 899; ++i) {
    std::snprintf(key, sizeof key, "a%03d", i);
    ui::gpuTexture(key, 1, 1, paintColour, &log);
  }
  int draws = 0;
  ui::gpuRenderTarget("0target", 1, 1, countDraw, &draws, false);
  ui::gpuBeginFrame();  // frame 2
  ui::gpuTexture("b", 1, 1, paintColour, &log);
  ASSERT_EQ(ui::gpuCacheSize(), 901u) << "the bound is exceeded only by the next insertion";
  ui::gpuBeginFrame();  // frame 3
  for (int i = 0; i < 100; ++i) {
    std::snprintf(key, sizeof key, "a%03d", i);
    ui::gpuTexture(key, 1, 1, paintColour, &log);
  }
  ui::gpuRenderTarget("0target", 1, 1, countDraw, &draws, false);
  ui::gpuBeginFrame();  // frame 4
  ui::gpuTexture("c", 1, 1, paintColour, &log);

  EXPECT_EQ(ui::gpuCacheSize(), 602u);
  EXPECT_TRUE(ui::gpuCached("a000")) << "touched in frame 3";
  EXPECT_TRUE(ui::gpuCached("a099"));
  EXPECT_FALSE(ui::gpuCached("a100"));
  EXPECT_FALSE(ui::gpuCached("a398"));
  EXPECT_TRUE(ui::gpuCached("a399"));
  EXPECT_FALSE(ui::gpuCached("0target")) << "reuse in frame 3 did not refresh it";
  EXPECT_TRUE(ui::gpuCached("b"));
  EXPECT_TRUE(ui::gpuCached("c"));
}

}  // namespace
