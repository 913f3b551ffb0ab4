// The game itself, started as a player starts it, timing the way in from
// inside: SDL_RenderPresent is wrapped (this program's definition wins over
// the library's for the game's calls) to note when each frame is shown.
// Prints, in milliseconds: process start (BENCH_T0, wall-clock nanoseconds
// taken by the script just before it starts the game) to the splash's first
// shown frame; the splash's end (the shown frame in which it gave way) to
// the first menu frame shown with every background piece built; and the
// longest gap between two shown menu frames in the two seconds after. Then
// it ends the game with SIGTERM, as a window manager would.
#include <SDL.h>
#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "app/shell.h"
#include "ui/game.h"
#include "ui/screens/background_pieces.h"

namespace {

struct Timing {
  double t0 = 0;  // ms, wall clock
  double firstShown = -1, splashEnd = -1, menuReady = -1, lastShown = -1, worstGap = 0;
  bool done = false;
};

Timing g_timing;

double wallMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::system_clock::now().time_since_epoch()).count();
}

void note(SDL_Renderer* renderer) {
  Timing& t = g_timing;
  const double now = wallMs();
  const ui::Game& game = ui::Game::instance();
  if (t.firstShown < 0) t.firstShown = now;
  if (t.splashEnd < 0 && game.top().screen == ui::ScreenKind::Menu) {
    t.splashEnd = now;
    return;
  }
  int w = 0, h = 0;
  SDL_GetRendererOutputSize(renderer, &w, &h);
  const size_t all = static_cast<size_t>(ui::backgroundPieceCount(w, h));
  if (t.splashEnd >= 0 && t.menuReady < 0 && ui::backgroundPieces().size() == all) t.menuReady = t.lastShown = now;
  if (t.menuReady < 0 || t.done) return;
  t.worstGap = std::max(t.worstGap, now - t.lastShown);
  t.lastShown = now;
  if (now - t.menuReady > 2000) {
    t.done = true;
    std::printf("[bench] start %.1f splash-end %.1f worst-gap %.1f\n", t.firstShown - t.t0, t.menuReady - t.splashEnd,
                t.worstGap);
    std::fflush(stdout);
    std::raise(SIGTERM);
  }
}

}  // namespace

extern "C" void SDL_RenderPresent(SDL_Renderer* renderer) {
  using Present = void (*)(SDL_Renderer*);
  static const Present real = reinterpret_cast<Present>(dlsym(RTLD_NEXT, "SDL_RenderPresent"));
  real(renderer);
  note(renderer);
}

int main(int argc, char** argv) {
  const char* t0 = std::getenv("BENCH_T0");
  g_timing.t0 = t0 ? std::atof(t0) / 1e6 : wallMs();
  return app::run(argc, argv);
}
