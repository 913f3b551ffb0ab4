// Whole frames of the game in a real window, as the player waits for them:
//
//   frame_bench WIDTHxHEIGHT FRAMES
//
// One process draws, in this order, FRAMES frames of each case and prints a
// line per case: "case frames wall-ms game-cpu-ms x-cpu-ms check", the last
// three per frame. The renderer is SDL's choice under the SDL_RENDER_DRIVER
// the caller sets, never vsync-paced, with the game's own hints.
//
//   bare    clear, a full-window transparent layer uploaded and composited,
//           present: the frame of an empty program, the baseline
//   idle    a 10 x 11 puzzle of level 1, every piece loose on the table, the
//           pointer resting
//   drag    the same while a piece is dragged in circles; check: how far the
//           piece ended from where the pointer carried it (0 = it moved)
//   placed  the same puzzle with all but 10 pieces home, pointer resting
//   plain-idle, plain-drag   idle and drag again on the plain path, which
//           draws everything every frame (no cached table, the whole
//           layer): the frame as it cost before the caches, same run
//   menu    the menu over its drifting pieces; check: the pieces drawn
//   solved  the solved screen's first frame, its picture painted from the
//           file (one frame); check: 0
//   gallery a gallery of 200 solves scrolled by the wheel, a notch every
//           frame; check: the longest frame's wall time in ms
//
// CPU is from /proc: the runtime of every thread of this process and of the
// X server (its pid in BENCH_XPID), so work SDL defers to present, Mesa's
// worker threads and the server's share of presenting are all counted.
#include <SDL.h>
#include <dirent.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "platform/heap.h"
#include "store/store.h"
#include "ui/frame.h"
#include "ui/game.h"
#include "ui/gpu.h"
#include "ui/screens/background_pieces.h"
#include "ui/screens/playing_screen.h"
#include "ui/text.h"

namespace {

// Nanoseconds on a CPU of every thread of process `pid`, 0 if unknown.
double cpuNanos(const std::string& pid) {
  if (pid.empty()) return 0;
  const std::string dir = "/proc/" + pid + "/task";
  DIR* d = opendir(dir.c_str());
  if (!d) return 0;
  double total = 0;
  while (dirent* e = readdir(d)) {
    if (e->d_name[0] == '.') continue;
    std::ifstream in(dir + "/" + e->d_name + "/schedstat");
    double ns = 0;
    if (in >> ns) total += ns;
  }
  closedir(d);
  return total;
}

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Bench {
  SDL_Window* window = nullptr;
  SDL_Renderer* renderer = nullptr;
  ui::FrameLayer layer;
  ui::Ctx ctx;
  int w = 0, h = 0;
  std::string xpid;
};

// The case's input for frame i of n.
using InputFn = ui::Input (*)(int i, void* user);

struct Sample {
  double frames, wall, game, x;
};

void frame(Bench& b, const ui::Input& in) {
  b.ctx.in.dx = in.mouseX - b.ctx.in.mouseX;
  b.ctx.in.dy = in.mouseY - b.ctx.in.mouseY;
  const double dx = b.ctx.in.dx, dy = b.ctx.in.dy;
  b.ctx.in = in;
  b.ctx.in.dx = dx;
  b.ctx.in.dy = dy;
  const double t = now();
  b.ctx.dt = std::min(t - b.ctx.time, 0.1);
  b.ctx.time = t;
  ui::drawFrame(b.renderer, b.layer, b.ctx, b.w, b.h, 1.0);
  SDL_RenderPresent(b.renderer);
  SDL_PumpEvents();
}

template <typename Draw>
Sample measure(Bench& b, int frames, Draw draw) {
  const double wall0 = now(), game0 = cpuNanos("self"), x0 = cpuNanos(b.xpid);
  for (int i = 0; i < frames; ++i) draw(i);
  const double wall = now() - wall0, game = cpuNanos("self") - game0, x = cpuNanos(b.xpid) - x0;
  return Sample{double(frames), wall * 1e3 / frames, game * 1e-6 / frames, x * 1e-6 / frames};
}

void print(const char* name, const Sample& s, double check) {
  std::printf("%s %.0f %.3f %.3f %.3f %.2f\n", name, s.frames, s.wall, s.game, s.x, check);
  std::fflush(stdout);
}

// The baseline frame, built from SDL calls alone so it stays the same
// whatever the game's layer learns to skip.
void bareCase(Bench& b, int frames) {
  SDL_Texture* tex = SDL_CreateTexture(b.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, b.w, b.h);
  SDL_SetTextureBlendMode(tex, ui::gpuBlendMode());
  std::string pixels(static_cast<size_t>(b.w) * b.h * 4, '\0');
  const Sample s = measure(b, frames, [&](int) {
    SDL_SetRenderDrawColor(b.renderer, 0x20, 0x24, 0x2a, 255);
    SDL_RenderClear(b.renderer);
    SDL_UpdateTexture(tex, nullptr, pixels.data(), b.w * 4);
    SDL_RenderCopy(b.renderer, tex, nullptr, nullptr);
    SDL_RenderPresent(b.renderer);
    SDL_PumpEvents();
  });
  SDL_DestroyTexture(tex);
  print("bare", s, 0);
}

ui::PlayingScreen& startPuzzle(Bench& b) {
  store::clearPuzzle();
  store::Settings& s = store::settings();
  s.difficulty = 5;
  s.boardLayout = store::BoardLayout::Scatter;
  ui::GameState playing;
  playing.screen = ui::ScreenKind::Playing;
  playing.levelId = "level1";
  playing.rows = 10;
  playing.cols = 11;
  ui::Game::instance().resetTo(playing);
  ui::Input rest;
  rest.mouseX = 2;
  rest.mouseY = b.h - 2;
  // Until every piece texture is painted and the start-up demo is over.
  for (int i = 0; i < 90; ++i) frame(b, rest);
  return *static_cast<ui::PlayingScreen*>(ui::Game::instance().current());
}

ui::Input pointer(double x, double y, bool down) {
  ui::Input in;
  in.mouseX = x;
  in.mouseY = y;
  in.mouseDown = down;
  return in;
}

void restCase(Bench& b, const char* name, int frames) {
  const ui::Input rest = pointer(2, b.h - 2, false);
  print(name, measure(b, frames, [&](int) { frame(b, rest); }), 0);
}

// Picks the topmost loose piece under the middle of the left table zone and
// carries it round a circle; returns how far it ended from where the
// pointer took it (the grab offset kept), in pixels.
void dragCase(Bench& b, ui::PlayingScreen& screen, int frames, const char* name) {
  core::Puzzle& puzzle = screen.puzzle();
  const core::Piece* target = nullptr;
  for (const core::Piece& p : puzzle.pieces) {
    if (!p.placed && !p.inTray && (!target || p.x < target->x)) target = &p;
  }
  if (!target) return print(name, Sample{0, 0, 0, 0}, -1);
  const double boxW = puzzle.cellW + 2 * puzzle.pad, boxH = puzzle.cellH + 2 * puzzle.pad;
  const double x0 = target->x + boxW / 2, y0 = target->y + boxH / 2;
  const core::Piece* hit = puzzle.hitTest(x0, y0);
  const double px0 = hit->x, py0 = hit->y;
  ui::Input press = pointer(x0, y0, true);
  press.mousePressed = true;
  frame(b, press);
  double mx = x0, my = y0;
  const double radius = std::min(b.w, b.h) * 0.15;
  const Sample s = measure(b, frames, [&](int i) {
    const double a = i * 0.12;
    mx = x0 + radius * std::sin(a);
    my = y0 + radius * (1 - std::cos(a));
    frame(b, pointer(mx, my, true));
  });
  const double missed = std::hypot(hit->x - (px0 + mx - x0), hit->y - (py0 + my - y0));
  const double moved = std::hypot(hit->x - px0, hit->y - py0);
  ui::Input release = pointer(mx, my, false);
  release.mouseReleased = true;
  frame(b, release);
  print(name, s, moved > 1 ? missed : -1);
}

// All but the last ten pieces home, as in a nearly finished puzzle.
void placeMost(Bench& b, ui::PlayingScreen& screen) {
  core::Puzzle& puzzle = screen.puzzle();
  for (size_t i = 0; i + 10 < puzzle.pieces.size(); ++i) {
    core::Piece& p = puzzle.pieces[i];
    p.x = p.restX = puzzle.boardX + p.col * puzzle.cellW - puzzle.pad;
    p.y = p.restY = puzzle.boardY + p.row * puzzle.cellH - puzzle.pad;
    p.rotation = 0;
    p.placed = true;
  }
  for (int i = 0; i < 30; ++i) frame(b, pointer(2, b.h - 2, false));
}

void show(ui::ScreenKind kind, const char* levelId = "", int rows = 0, int cols = 0) {
  ui::GameState state;
  state.screen = kind;
  state.levelId = levelId;
  state.rows = rows;
  state.cols = cols;
  ui::Game::instance().resetTo(state);
}

void menuCase(Bench& b, int frames) {
  show(ui::ScreenKind::Menu);
  const ui::Input rest = pointer(2, b.h - 2, false);
  for (int i = 0; i < 120; ++i) frame(b, rest);  // the pieces drift in
  const Sample s = measure(b, frames, [&](int) { frame(b, rest); });
  print("menu", s, static_cast<double>(ui::backgroundPieces().size()));
}

void solvedCase(Bench& b) {
  show(ui::ScreenKind::Solved, "level2", 10, 11);
  const ui::Input rest = pointer(2, b.h - 2, false);
  print("solved", measure(b, 1, [&](int) { frame(b, rest); }), 0);
}

// The longest frame counts: a scroll that stutters once is felt.
void galleryCase(Bench& b, int frames) {
  std::vector<store::SolveEntry>& solves = store::solves();
  solves.clear();
  for (int i = 0; i < 200; ++i) {
    const std::string level = "level" + std::to_string(1 + i % 40);
    solves.push_back(store::SolveEntry{std::to_string(i), level, 5 + i % 6, 6 + i % 6, 60000 + i * 1000, i * 1000000LL});
  }
  show(ui::ScreenKind::Gallery);
  ui::Input over = pointer(b.w / 2.0, b.h / 2.0, false);
  frame(b, over);
  double worst = 0;
  const Sample s = measure(b, frames, [&](int i) {
    over.wheel = i < frames / 2 ? -1 : 1;  // down, then back up
    const double t0 = now();
    frame(b, over);
    worst = std::max(worst, (now() - t0) * 1e3);
  });
  print("gallery", s, worst);
}

bool open(Bench& b) {
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
  SDL_SetHint(SDL_HINT_RENDER_BATCHING, "1");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) return false;
  b.window = SDL_CreateWindow("bench", 0, 0, b.w, b.h, SDL_WINDOW_SHOWN);
  if (!b.window) return false;
  b.renderer = SDL_CreateRenderer(b.window, -1, 0);
  if (!b.renderer) return false;
  SDL_RendererInfo info;
  SDL_GetRendererInfo(b.renderer, &info);
  std::printf("renderer %s\n", info.name);
  ui::gpuInit(b.renderer);
  ui::registerBundledFonts();
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Bench b;
  if (argc < 3 || std::sscanf(argv[1], "%dx%d", &b.w, &b.h) != 2) {
    std::fputs("usage: frame_bench WIDTHxHEIGHT FRAMES\n", stderr);
    return 2;
  }
  const int frames = std::atoi(argv[2]);
  platform::keepFreedHeap();  // as the game's main does
  if (const char* x = std::getenv("BENCH_XPID")) b.xpid = x;
  store::init();
  if (!open(b)) {
    std::fprintf(stderr, "SDL: %s\n", SDL_GetError());
    return 1;
  }
  b.ctx.time = now();
  bareCase(b, frames);
  ui::PlayingScreen& screen = startPuzzle(b);
  restCase(b, "idle", frames);
  dragCase(b, screen, frames, "drag");
  ui::gpuSetCaching(false);
  restCase(b, "plain-idle", frames);
  dragCase(b, screen, frames, "plain-drag");
  ui::gpuSetCaching(true);
  placeMost(b, screen);
  restCase(b, "placed", frames);
  ui::Game::instance().saveNow();
  menuCase(b, frames);
  solvedCase(b);
  galleryCase(b, frames);
  b.layer.release();
  ui::gpuShutdown();
  SDL_Quit();
  return 0;
}
