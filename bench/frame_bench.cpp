// The game itself, for the frame-loop benchmarks: the real start-up and frame
// loop of the shell, with the starting state chosen here. BENCH_BARE set: no
// screen at all, so a frame is only the loop's own work (clear, the empty
// cairo layer uploaded and composited, present) — the baseline. Otherwise a
// 10 x 11 puzzle of level 1 with every piece dealt on the table. Every pass
// of the loop draws, changed or not: a frame's cost is what is measured.
#include <cstdlib>

#include "app/shell.h"
#include "store/store.h"
#include "ui/game.h"

int main(int argc, char** argv) {
  store::init();
  if (std::getenv("BENCH_BARE")) {
    ui::GameState none;
    none.screen = static_cast<ui::ScreenKind>(9);  // beyond every screen: nothing is built
    ui::Game::instance().resetTo(none);
  } else {
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
  }
  return app::run(argc, argv, app::Frames::EveryPass);
}
