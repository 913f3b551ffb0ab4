// The level select opening on a real 1920 x 1080 window, frame by frame:
// each frame's wall time (events, the whole frame, present) from the
// screen's first frame until every visible thumbnail is shown, and on for
// another 60 frames (a second at 60 Hz) while the rows around the view are
// painted and the painted thumbnails written to disk.
// Two baselines from the same run: the bare frame (no screen), and decoding
// the pictures of the visible cards at once, as a screen painting them all
// in its first frame would. Every figure twice: wall time, then the game's
// own CPU time (which a machine busy with other work barely changes).
// Prints one line of milliseconds but for the frame count:
//
//   first(wall cpu) max(wall cpu) ready(wall cpu) frames bare(wall cpu)
//   decode(wall cpu)
//
// BENCH_SOLVED set: every level counts as solved first, so every thumbnail
// is painted from the full-size photograph rather than the small blurred one.
// Run by bench/level_select.sh, which chooses the data and cache folders.
#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "core/catalog.h"
#include "core/level_progress.h"
#include "i18n/i18n.h"
#include "platform/image.h"
#include "store/store.h"
#include "ui/frame.h"
#include "ui/game.h"
#include "ui/gpu.h"
#include "ui/text.h"
#include "ui/textures/level_thumb.h"

namespace {

constexpr int kW = 1920, kH = 1080;
constexpr int kVisibleCards = 12;  // four columns, three rows begun below the header

// Wall and CPU milliseconds.
struct Cost {
  double wall = 0, cpu = 0;
};

double nowMs(clockid_t clock) {
  timespec t;
  clock_gettime(clock, &t);
  return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
}

template <typename F>
Cost measure(F &&f) {
  const double wall = nowMs(CLOCK_MONOTONIC), cpu = nowMs(CLOCK_PROCESS_CPUTIME_ID);
  f();
  return Cost{nowMs(CLOCK_MONOTONIC) - wall, nowMs(CLOCK_PROCESS_CPUTIME_ID) - cpu};
}

Cost maxOf(Cost a, Cost b) { return Cost{std::max(a.wall, b.wall), std::max(a.cpu, b.cpu)}; }

Cost median(std::vector<Cost> v) {
  std::vector<double> wall, cpu;
  for (const Cost &c : v) wall.push_back(c.wall), cpu.push_back(c.cpu);
  std::nth_element(wall.begin(), wall.begin() + wall.size() / 2, wall.end());
  std::nth_element(cpu.begin(), cpu.begin() + cpu.size() / 2, cpu.end());
  return Cost{wall[wall.size() / 2], cpu[cpu.size() / 2]};
}

struct Window {
  SDL_Window *window = nullptr;
  SDL_Renderer *renderer = nullptr;
  ui::FrameLayer layer;
  ui::Ctx ctx;

  Cost frame() {
    return measure([&] {
      SDL_PumpEvents();
      ctx.dt = 1.0 / 60;
      ctx.time += ctx.dt;
      ui::drawFrame(renderer, layer, ctx, kW, kH, 1.0);
      SDL_RenderPresent(renderer);
    });
  }
};

void showScreen(ui::ScreenKind kind) {
  ui::GameState s;
  s.screen = kind;
  ui::Game::instance().resetTo(s);
}

// What a screen decoding every visible picture in its first frame would spend.
Cost decodeVisible() {
  return measure([] {
    const std::vector<core::LevelProgress> progress = core::levelProgress(store::solves(), store::currentPuzzle());
    for (int i = 0; i < kVisibleCards; ++i) {
      const core::Level &level = *progress[i].level;
      const std::string path = progress[i].solved.empty() ? core::levelBlurPath(level) : core::levelImagePath(level);
      cairo_surface_destroy(platform::loadImage(path, 2 * 460, 2 * 306));
    }
  });
}

void print(Cost c) { std::printf("%.1f %.1f ", c.wall, c.cpu); }

}  // namespace

int main() {
  store::init();
  i18n::setLanguage("en");
  const char *solved = std::getenv("BENCH_SOLVED");
  if (solved && *solved && store::solves().empty()) {
    for (const core::Level &level : core::levels()) store::recordSolve(level.id, 5, 6, 60000);
  }
  if (SDL_Init(SDL_INIT_VIDEO) != 0) return 1;
  Window w;
  w.window = SDL_CreateWindow("bench", 0, 0, kW, kH, SDL_WINDOW_SHOWN);
  w.renderer = w.window ? SDL_CreateRenderer(w.window, -1, 0) : nullptr;
  if (!w.renderer) return 1;
  ui::gpuInit(w.renderer);
  ui::registerBundledFonts();

  // The first text laid out loads the fonts; in the game an earlier screen
  // did that long before the level select opens.
  cairo_surface_t* scratch = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8);
  cairo_t* cr = cairo_create(scratch);
  double tw = 0, th = 0;
  ui::measureText(cr, "LVL 1", ui::TextStyle(), &tw, &th);
  cairo_destroy(cr);
  cairo_surface_destroy(scratch);
  showScreen(static_cast<ui::ScreenKind>(9));  // beyond every screen: the bare frame
  std::vector<Cost> bare;
  for (int i = 0; i < 30; ++i) bare.push_back(w.frame());

  showScreen(ui::ScreenKind::LevelSelect);
  Cost elapsed, ready{-1, -1}, first, worst;
  int frames = 0, readyFrame = -1;
  for (; frames < 600 && (readyFrame < 0 || frames < readyFrame + 60); ++frames) {
    const Cost c = w.frame();
    elapsed = Cost{elapsed.wall + c.wall, elapsed.cpu + c.cpu};
    if (frames == 0) first = c;
    worst = maxOf(worst, c);
    if (readyFrame < 0 && ui::thumbsPending() == 0) ready = elapsed, readyFrame = frames;
  }
  print(first), print(worst), print(ready);
  std::printf("%d ", frames);
  print(median(bare)), print(decodeVisible());
  std::printf("\n");
  ui::gpuShutdown();
  SDL_DestroyRenderer(w.renderer);
  SDL_DestroyWindow(w.window);
  SDL_Quit();
  return 0;
}
