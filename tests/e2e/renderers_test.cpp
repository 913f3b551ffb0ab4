// The same frame, with half-transparent colours on both drawing layers, drawn
// by the accelerated renderer (premultiplied blending) and by SDL's software
// renderer (straight alpha after conversion) must look the same.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "store/store.h"
#include "tests/support/test_support.h"
#include "ui/draw.h"
#include "ui/frame.h"
#include "ui/frame_layer.h"
#include "ui/gpu.h"
#include "ui/screens/playing_screen.h"
#include "ui/text.h"

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

// The cached table and the frame layer's drawn tiles against the plain path
// that draws everything every frame: after each step, the second cached
// frame (the one that reuses what the first kept) and a plain frame of the
// same state must look the same.
struct Session {
  SDL_Renderer* r;
  ui::FrameLayer layer;
  ui::Ctx ctx;
  std::vector<uint32_t> frame(bool cached) {
    ui::gpuSetCaching(cached);
    std::vector<uint32_t> pixels(kW * kH);
    ui::drawFrame(r, layer, ctx, kW, kH, 1.0);
    SDL_RenderReadPixels(r, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels.data(), kW * 4);
    SDL_RenderPresent(r);
    ctx.in.mousePressed = ctx.in.mouseReleased = false;
    ctx.in.keys.clear();
    return pixels;
  }
  core::Puzzle& puzzle() { return static_cast<ui::PlayingScreen*>(ui::Game::instance().current())->puzzle(); }
  static constexpr int kW = 1000, kH = 700;
};

void placeTwenty(Session& s) {
  for (int i = 0; i < 20; ++i) {
    core::Piece& p = s.puzzle().pieces[i * 3];
    p.x = p.restX = s.puzzle().boardX + p.col * s.puzzle().cellW - s.puzzle().pad;
    p.y = p.restY = s.puzzle().boardY + p.row * s.puzzle().cellH - s.puzzle().pad;
    p.placed = true;
    p.inTray = false;
  }
}
void grabLoosePiece(Session& s) {
  const core::Piece& p = s.puzzle().pieces[1];
  s.ctx.in.mouseX = p.x + s.puzzle().cellW / 2 + s.puzzle().pad;
  s.ctx.in.mouseY = p.y + s.puzzle().cellH / 2 + s.puzzle().pad;
  s.ctx.in.mouseDown = s.ctx.in.mousePressed = true;
}
void dragIt(Session& s) { s.ctx.in.mouseX += 90, s.ctx.in.mouseY += 40; }
void drop(Session& s) {
  s.ctx.in.mouseDown = false;
  s.ctx.in.mouseReleased = true;
}
void askToShuffle(Session& s) {
  s.ctx.in.ctrl = true;
  s.ctx.in.keys = {SDLK_r};
}
void closeTheDialog(Session& s) {
  s.ctx.in.ctrl = false;
  s.ctx.in.keys = {SDLK_ESCAPE};
}

TEST(Renderers, CachedFramesLookLikeThePlainOnes) {
  testsupport::XServer x(1100, 800);
  ASSERT_TRUE(x.ok());
  testsupport::ScopedEnv display("DISPLAY", x.display());
  testsupport::ScopedEnv driver("SDL_VIDEODRIVER", "x11");
  ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
  ui::registerBundledFonts();
  const std::pair<const char*, void (*)(Session&)> steps[] = {{"placed pieces", placeTwenty},
      {"a piece picked up", grabLoosePiece}, {"dragged", dragIt}, {"dropped", drop}, {"a dialog", askToShuffle},
      {"the dialog gone", closeTheDialog}};
  for (const Uint32 flags : {SDL_RENDERER_ACCELERATED, SDL_RENDERER_SOFTWARE}) {
    const Uint32 windowFlags = SDL_WINDOW_HIDDEN | (flags & SDL_RENDERER_SOFTWARE ? 0 : SDL_WINDOW_OPENGL);
    SDL_Window* window = SDL_CreateWindow("cached", 0, 0, Session::kW, Session::kH, windowFlags);
    Session s{SDL_CreateRenderer(window, -1, flags), {}, {}};
    ui::gpuInit(s.r);
    store::clearPuzzle();
    store::settings().boardLayout = store::BoardLayout::Scatter;
    ui::GameState st{ui::ScreenKind::Playing, "level1", 6, 7};
    ui::Game::instance().resetTo(st);
    for (int i = 0; i < 60; ++i) s.frame(true);
    for (const auto& [name, act] : steps) {
      act(s);
      s.frame(true);
      const std::vector<uint32_t> cached = s.frame(true), plain = s.frame(false);
      EXPECT_TRUE(ui::gpuCached("table@playing"));
      int worst = 0;
      for (size_t i = 0; i < plain.size(); ++i) worst = std::max(worst, channelDiff(cached[i], plain[i]));
      EXPECT_LE(worst, 3) << name << (flags == SDL_RENDERER_SOFTWARE ? ", software" : ", OpenGL");
    }
    ui::Game::instance().resetTo(ui::GameState{});
    s.layer.release();
    ui::gpuShutdown();
    SDL_DestroyRenderer(s.r);
    SDL_DestroyWindow(window);
  }
  ui::gpuSetCaching(true);
  SDL_Quit();
}

}  // namespace
