#include "ui/screens/playing_screen.h"

#include <cstdlib>

#include "audio/audio.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "ui/focus.h"
#include "ui/frame_layer.h"
#include "ui/gpu.h"
#include "ui/screens/screens.h"
#include "ui/widgets/dialog.h"

namespace ui {

namespace {

constexpr double kAutosaveInterval = 0.4;  // seconds between saves of a burst of moves
constexpr double kSolvedPause = 2.5;       // seconds the finished picture shows
constexpr int64_t kClockSaveMs = 5000;     // play time saved at least this often
constexpr double kLate = 0.001;            // a timed frame comes this much after its moment, never before

// TESSELLATRIX_DEMO: the percentage of pieces put home on the first frame.
int demoPercent() {
  const char* value = std::getenv("TESSELLATRIX_DEMO");
  if (!value) return 0;
  const long p = std::strtol(value, nullptr, 10);
  return p > 99 ? 100 : (p < 1 ? 0 : static_cast<int>(p));
}

}  // namespace

PlayingScreen::PlayingScreen(std::string levelId, int rows, int cols) : puzzle_(std::move(levelId), rows, cols) {}

std::unique_ptr<Screen> makePlayingScreen(std::string levelId, int rows, int cols) {
  return std::make_unique<PlayingScreen>(std::move(levelId), rows, cols);
}

void PlayingScreen::update(Ctx& ctx) {
  store::Settings& settings = store::settings();
  // Tab, the arrows and Return play pieces here; only a question's buttons
  // take the focus.
  if (!dialogOpen()) focusYieldKeys();
  headerH_ = headerHeightFor(ctx, settings);
  landscape_ = ctx.width > ctx.height;
  puzzle_.layout(ctx.width, ctx.height, headerH_, settings.boardLayout, TrayStrips::kExtent);
  tray_.layout(ctx.width, ctx.height, headerH_);
  if (first_) firstFrame(ctx, settings);
  // Away from the game (focus lost, minimised) the clock must not run on.
  if (wasActive_ && !ctx.in.windowActive && !solved()) {
    paused_ = true;
    letGo();
  }
  // A new window size moves the board under the piece in hand.
  if (ctx.width != lastW_ || ctx.height != lastH_) letGo();
  lastW_ = ctx.width;
  lastH_ = ctx.height;
  wasActive_ = ctx.in.windowActive;
  advanceClock(ctx);

  if (puzzle_.layoutMode == store::BoardLayout::ScrollTray) tray_.setPieces(puzzle_);
  {
    InputShield beneath(ctx, dialogOpen());
    if (paused_) {
      handlePausedKeys(ctx);
    } else if (!solved() && !dialogOpen()) {
      handleInput(ctx, settings);
    }
    view_.clampPan(puzzle_, ctx.width, ctx.height);
    checkSolved(ctx);
    autosave(ctx, false);
    drawScreen(ctx, settings);
  }
  if (dialogOpen()) handleDialog(ctx, settings);

  if (solved() && ctx.time - solvedAt_ >= kSolvedPause) {
    Game::instance().replace(
        GameState{ScreenKind::Solved, puzzle_.levelId, puzzle_.rows, puzzle_.cols, puzzle_.elapsedMs});
  }
  requestFrames(ctx);
}

// Between events the picture changes only with a piece in hand or gliding
// home, the clock's next second, a save falling due, and the solved pause.
void PlayingScreen::requestFrames(Ctx& ctx) const {
  if (held_ >= 0 || piecesGliding()) ctx.requestFrame();
  if (solved()) ctx.requestFrameAt(solvedAt_ + kSolvedPause);
  if (dirty_ && !solved()) ctx.requestFrameAt(lastSave_ + kAutosaveInterval + kLate);
  if (solved() || paused_ || dialogOpen()) return;
  const double owed = static_cast<double>((puzzle_.elapsedMs % 1000 + 1000) % 1000) + clockCarryMs_;
  ctx.requestFrameAt(ctx.time + (1000.0 - owed) / 1000.0 + kLate);
}

bool PlayingScreen::piecesGliding() const {
  for (const core::Piece& p : puzzle_.pieces) {
    if (p.restX != p.x || p.restY != p.y) return true;
  }
  return false;
}

void PlayingScreen::drawScreen(Ctx& ctx, const store::Settings& settings) {
  // Everything this screen puts on the frame layer is drawn by the widget
  // kit's primitives, which report where.
  layerTrackDamage();
  easePieces(ctx.dt, ctx.reducedMotion);
  if (!paused_) {
    // Piece textures are painted at twice the resolution from 150 % zoom on.
    sprites_.beginFrame(puzzle_, view_.zoom >= 1.5 ? 2 : 1);
    // With the scroll tray the table keeps to its own area, however far it
    // is zoomed: the strips lie on top, where their clicks go. Only the
    // piece in hand is carried over them.
    const bool strips = puzzle_.layoutMode == store::BoardLayout::ScrollTray;
    const Rect table = strips ? tray_.table(ctx.width, ctx.height, headerH_) : Rect{};
    drawTable(ctx, settings, strips ? &table : nullptr);
    if (strips) drawTray(settings);
    drawPieces(settings, true);
    drawKeyboardMarks(ctx);
  }
  drawHeader(ctx, settings);
  drawHints(ctx, settings);
  if (solved()) drawSolvedBanner(ctx);
  if (paused_) drawPause(ctx);
}

void PlayingScreen::firstFrame(const Ctx& ctx, const store::Settings& settings) {
  first_ = false;
  startedAt_ = prevTime_ = ctx.time;
  const int percent = demoPercent();
  const int demo = puzzle_.rows * puzzle_.cols * percent / 100;
  for (int i = 0; i < demo; ++i) {
    core::Piece& piece = puzzle_.pieces[i];
    puzzle_.targetOf(piece, &piece.x, &piece.y);
    piece.rotation = 0;
    piece.inTray = false;
    puzzle_.drop(piece, settings.boardLayout);
  }
  const store::SavedPuzzle& saved = store::currentPuzzle();
  const bool restored = puzzle_.restore(saved, ctx.width > ctx.height);
  savedClockMs_ = puzzle_.elapsedMs;
  if (!restored || saved.rotationMode != settings.rotationMode) puzzle_.applyRotationMode(settings.rotationMode);
  // With the scroll tray every loose piece waits in the strips, resumed or
  // not: a game left in another layout or a larger window would otherwise
  // pile its loose pieces where the strips now are. A fresh deal is saved at
  // once, so the menu can offer to continue it.
  if (settings.boardLayout == store::BoardLayout::ScrollTray) puzzle_.fillTray();
  if (!restored) dirty_ = true;
}

// Whole milliseconds are counted and the fraction carried, so the clock
// does not fall behind by a millisecond's fraction every frame.
void PlayingScreen::advanceClock(const Ctx& ctx) {
  const double passed = ctx.time - prevTime_;
  prevTime_ = ctx.time;
  if (solved() || dialog_ != Dialog::None || paused_ || passed <= 0) return;
  clockCarryMs_ += passed * 1000.0;
  const long long whole = static_cast<long long>(clockCarryMs_);
  puzzle_.elapsedMs += whole;
  clockCarryMs_ -= static_cast<double>(whole);
  // A game closed without leaving the screen loses at most this much time.
  if (puzzle_.elapsedMs - savedClockMs_ >= kClockSaveMs) dirty_ = true;
}

void PlayingScreen::checkSolved(const Ctx& ctx) {
  const int total = puzzle_.rows * puzzle_.cols;
  if (solved() || total <= 0 || puzzle_.placedCount() != total) return;
  solvedAt_ = ctx.time;
  held_ = -1;
  audio::play(audio::Sfx::Success);
  store::recordSolve(puzzle_.levelId, puzzle_.rows, puzzle_.cols, puzzle_.elapsedMs);
  store::clearPuzzle();
  dirty_ = false;
}

void PlayingScreen::autosave(const Ctx& ctx, bool force) {
  if (!dirty_ || solved()) return;
  if (!force && ctx.time - lastSave_ <= kAutosaveInterval) return;
  writeSave();
  lastSave_ = ctx.time;
}

// A piece in hand when the game is left or loses the window is let go where
// it is, as a release there would: it is never saved in mid-air.
void PlayingScreen::letGo() {
  if (held_ >= 0) dropHeld(store::settings());
}

// When the game ends, the moves of the last moment and the play time since
// the last save are kept.
void PlayingScreen::saveNow() {
  letGo();
  writeSave();
}

void PlayingScreen::writeSave() {
  if (solved() || first_ || (!dirty_ && puzzle_.elapsedMs == savedClockMs_)) return;
  store::SavedPuzzle record = puzzle_.snapshot(landscape_);
  record.rotationMode = store::settings().rotationMode;
  store::savePuzzle(record);
  savedClockMs_ = puzzle_.elapsedMs;
  dirty_ = false;
}

// The clock is part of the game: leaving saves it even without a move.
void PlayingScreen::leave(const Ctx& ctx) {
  letGo();
  dirty_ = true;
  autosave(ctx, true);
  Game::instance().back();
}

void PlayingScreen::handleDialog(Ctx& ctx, const store::Settings& settings) {
  const bool restart = dialog_ == Dialog::Restart;
  const int decision =
      confirmDialog(ctx, i18n::tr(restart ? "playing.confirmRestartTitle" : "playing.confirmShuffleTitle"),
                    i18n::tr(restart ? "playing.confirmRestartMessage" : "playing.confirmShuffleMessage"),
                    i18n::tr("common.ok"), i18n::tr("common.cancel"));
  if (decision == 0) return;
  dialog_ = Dialog::None;
  if (decision < 0) return;
  if (restart) {
    restartGame(settings);
  } else {
    shuffleGame(settings);
  }
  dirty_ = true;
}

void PlayingScreen::restartGame(const store::Settings& settings) {
  held_ = picked_ = -1;
  puzzle_.restart();
  puzzle_.applyRotationMode(settings.rotationMode);
  clockCarryMs_ = 0;
  store::clearPuzzle();
}

// Placed pieces stay; everything else is dealt and turned anew.
void PlayingScreen::shuffleGame(const store::Settings& settings) {
  held_ = picked_ = -1;
  puzzle_.scatter(7);
  puzzle_.applyRotationMode(settings.rotationMode);
  if (settings.boardLayout == store::BoardLayout::ScrollTray) puzzle_.fillTray();
}

}  // namespace ui
