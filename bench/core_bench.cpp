// Cost of the puzzle rules at the largest grid (10 x 11, 110 pieces): cutting
// and building the model, the first layout with its deal in each board
// layout, a re-deal, and picking a piece under the pointer. Each figure is the
// median over many samples of the time per call, in microseconds, next to a
// baseline measured in the same run.
//
//   core_bench [samples]
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "core/edges.h"
#include "core/puzzle.h"
#include "bench/timing.h"

namespace {

using bench::medianMicros;
using store::BoardLayout;

constexpr int kRows = 10;
constexpr int kCols = 11;
constexpr double kViewW = 1920;
constexpr double kViewH = 1080;
constexpr double kTop = 64;
constexpr double kTray = 120;

volatile double g_sink = 0;  // keeps the measured work from being optimised away

void report(const char* what, double micros, const char* baseline, double baseMicros) {
  std::printf("| %s | %.2f | %s | %.2f | %.1f |\n", what, micros, baseline, baseMicros, micros / baseMicros);
}

// Puzzles ready to be laid out, made before the clock starts. Each of another
// level, so no two deal alike and the branch predictor cannot learn the deal.
std::vector<core::Puzzle> freshPuzzles(int n) {
  std::vector<core::Puzzle> out;
  for (int i = 0; i < n; ++i) out.emplace_back("level" + std::to_string(1 + i % 40), kRows, kCols);
  return out;
}

void benchBuild(int samples) {
  const double cut = medianMicros(
      samples, 20, [] {},
      [] { g_sink = g_sink + core::generateEdges(kRows, kCols, 165783452u)[kRows - 1][kCols - 1].top; });
  const double build = medianMicros(
      samples, 20, [] {},
      [] {
        const core::Puzzle p("level1", kRows, kCols);
        g_sink = g_sink + p.order.back();
      });
  report("build 10 x 11 (cut, 110 pieces, tray order)", build, "cut only", cut);
}

void benchLayout(int samples) {
  constexpr int kCalls = 20;
  std::vector<core::Puzzle> puzzles;
  size_t next = 0;
  const auto prepare = [&] {
    puzzles = freshPuzzles(kCalls);
    next = 0;
  };
  const double zones = medianMicros(samples, kCalls, prepare, [&] {
    puzzles[next++].computeZones(kViewW, kViewH, kTop, BoardLayout::Scatter, kTray);
  });
  const char* names[] = {"first layout and deal, scattered", "first layout and deal, tray grid",
                         "first layout and deal, scroll tray"};
  const BoardLayout modes[] = {BoardLayout::Scatter, BoardLayout::Tray, BoardLayout::ScrollTray};
  for (int m = 0; m < 3; ++m) {
    const double t =
        medianMicros(samples, kCalls, prepare, [&] { puzzles[next++].layout(kViewW, kViewH, kTop, modes[m], kTray); });
    report(names[m], t, "geometry only", zones);
  }
  const auto prepareLaidOut = [&] {
    prepare();
    for (core::Puzzle& p : puzzles) p.layout(kViewW, kViewH, kTop, BoardLayout::Scatter, kTray);
  };
  const double redeal = medianMicros(samples, kCalls, prepareLaidOut, [&] { puzzles[next++].scatter(1); });
  report("re-deal (scatter), scattered", redeal, "geometry only", zones);
  core::Puzzle p("level1", kRows, kCols);
  p.layout(kViewW, kViewH, kTop, BoardLayout::Scatter, kTray);
  const double resize = medianMicros(
      samples, kCalls, [] {},
      [&] {
        const bool big = p.viewW == kViewW;
        p.layout(big ? 1280 : kViewW, big ? 800 : kViewH, kTop, BoardLayout::Scatter, kTray);
      });
  report("re-layout after a resize, scattered", resize, "geometry only", zones);
}

// Points spread over the whole window, most of them off any piece, as a
// pointer moving across the table would give.
void benchHitTest(int samples) {
  core::Puzzle p("level1", kRows, kCols);
  p.layout(kViewW, kViewH, kTop, BoardLayout::Scatter, kTray);
  for (size_t i = 0; i < p.pieces.size(); ++i) {
    p.pieces[i].rotation = static_cast<int>(i % 4) * 90;
    if (i % 3 == 0) p.pieces[i].placed = true;
  }
  std::vector<double> xs, ys;
  for (int i = 0; i < 1000; ++i) {
    xs.push_back(std::fmod(i * 37.7, kViewW));
    ys.push_back(std::fmod(i * 53.3, kViewH));
  }
  size_t k = 0;
  const double hit = medianMicros(
      samples, 1000, [] {},
      [&] {
        g_sink = g_sink + (p.hitTest(xs[k], ys[k]) != nullptr);
        k = (k + 1) % xs.size();
      });
  // The least any hit test can do: one rectangle test per piece.
  const double w = p.cellW + 2 * p.pad;
  const double h = p.cellH + 2 * p.pad;
  const double bare = medianMicros(
      samples, 1000, [] {},
      [&] {
        int hits = 0;
        for (const core::Piece& piece : p.pieces) {
          hits += xs[k] >= piece.x && xs[k] <= piece.x + w && ys[k] >= piece.y && ys[k] <= piece.y + h;
        }
        g_sink = g_sink + hits;
        k = (k + 1) % xs.size();
      });
  report("hitTest over 110 pieces", hit, "bare box scan", bare);
}

}  // namespace

int main(int argc, char** argv) {
  const int samples = argc > 1 ? std::max(3, std::atoi(argv[1])) : 301;
  std::printf("10 x 11 puzzle, %g x %g window, median of %d samples, microseconds per call\n\n", kViewW, kViewH,
              samples);
  std::printf("| what | us | baseline | us | ratio |\n|---|---|---|---|---|\n");
  benchBuild(samples);
  benchLayout(samples);
  benchHitTest(samples);
  return 0;
}
