// The same frame, with half-transparent colours on both drawing layers, drawn
// by the accelerated renderer (premultiplied blending) and by SDL's software
// renderer (straight alpha after conversion) must look the same.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "tests/support/test_support.h"
#include "ui/draw.h"
#include "ui/frame_layer.h"
#include "ui/gpu.h"

namespace {

constexpr int kSize = 64;

void paintTranslucentGreen(cairo_t* cr, void*) {
  cairo_set_source_rgba(cr, 0.2, 0.9, 0.3, 0.6);
  cairo_paint(cr);
  cairo_set_source_rgba(cr, 1, 1, 1, 0.25);
  cairo_rectangle(cr, 0, 0, 16, 32);
  cairo_fill(cr);
}

// One frame of both layers on a fresh window and renderer, read back.
std::vector<uint32_t> drawFrame(Uint32 rendererFlags) {
  std::vector<uint32_t> pixels(kSize * kSize);
  const Uint32 windowFlags = SDL_WINDOW_HIDDEN | (rendererFlags & SDL_RENDERER_SOFTWARE ? 0 : SDL_WINDOW_OPENGL);
  SDL_Window* window = SDL_CreateWindow("renderers", 0, 0, kSize, kSize, windowFlags);
  SDL_Renderer* r = SDL_CreateRenderer(window, -1, rendererFlags);
  if (!r) ADD_FAILURE() << "no renderer: " << SDL_GetError();
  ui::gpuInit(r);
  ui::gpuSetScale(1.0);
  ui::gpuBeginFrame();
  ui::FrameLayer layer;
  layer.ensure(r, kSize, kSize);
  cairo_t* cr = layer.begin(1.0);
  SDL_SetRenderDrawColor(r, 0x0e, 0x13, 0x20, 255);
  SDL_RenderClear(r);
  ui::gpuFillRect(0, 0, 40, 40, 0xff4020, 0.5);
  ui::gpuBlit(ui::gpuTexture("green", 32, 32, paintTranslucentGreen, nullptr), 16, 16, 32, 32, 0.7);
  ui::fillRect(cr, ui::Rect{24, 0, 40, 40}, 0xffffff, 0.5);
  ui::fillRoundedRect(cr, ui::Rect{8, 30, 50, 30}, 8, 0x3050ff, 0.35);
  layer.finishDrawing();
  layer.composite(r);
  SDL_RenderReadPixels(r, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(), kSize * 4);
  ui::gpuShutdown();
  layer.release();
  SDL_DestroyRenderer(r);
  SDL_DestroyWindow(window);
  return pixels;
}

int channelDiff(uint32_t a, uint32_t b) {
  int worst = 0;
  for (int shift : {0, 8, 16}) worst = std::max(worst, std::abs(int((a >> shift) & 255) - int((b >> shift) & 255)));
  return worst;
}

TEST(Renderers, HalfTransparentFramesMatchOnBothRenderers) {
  testsupport::XServer x(800, 600);
  ASSERT_TRUE(x.ok());
  testsupport::ScopedEnv display("DISPLAY", x.display());
  testsupport::ScopedEnv driver("SDL_VIDEODRIVER", "x11");
  ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();

  const std::vector<uint32_t> accelerated = drawFrame(SDL_RENDERER_ACCELERATED);
  ::testing::internal::CaptureStderr();
  const std::vector<uint32_t> software = drawFrame(SDL_RENDERER_SOFTWARE);
  ::testing::internal::GetCapturedStderr();
  SDL_Quit();
  int worst = 0;
  for (size_t i = 0; i < accelerated.size(); ++i) worst = std::max(worst, channelDiff(accelerated[i], software[i]));
  EXPECT_LE(worst, 3) << "largest channel difference between the renderers";
  // White at half coverage over the background: each channel halfway to 255.
  const uint32_t p = software[5 * kSize + 60];
  EXPECT_NEAR(int((p >> 16) & 255), (0x0e + 255) / 2, 2);
  EXPECT_NEAR(int(p & 255), (0x20 + 255) / 2, 2);
}

}  // namespace
