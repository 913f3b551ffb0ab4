#include "ui/game.h"

#include <cstdio>

#include "platform/crash.h"
#include "ui/focus.h"
#include "ui/screens/screens.h"

namespace ui {

Game::Game() { stack_.push_back(GameState{}); }

Game& Game::instance() {
  static Game game;
  return game;
}

void Game::push(const GameState& s) {
  stack_.push_back(s);
  ++generation_;
}

void Game::pop() {
  // Popping the last record keeps it but still rebuilds its screen afresh.
  if (stack_.size() > 1) stack_.pop_back();
  ++generation_;
}

void Game::replace(const GameState& s) {
  stack_.back() = s;
  ++generation_;
}

void Game::resetTo(const GameState& s) {
  stack_.assign(1, s);
  ++generation_;
}

void Game::back() {
  if (stack_.size() > 1) {
    pop();
  } else {
    GameState menu;
    menu.screen = ScreenKind::Menu;
    resetTo(menu);
  }
}

void Game::ensureScreen() {
  if (current_ && builtGeneration_ == generation_) return;
  builtGeneration_ = generation_;
  const GameState& s = stack_.back();
  char note[160];
  std::snprintf(note, sizeof note, "Bildschirm %d, Bild %s, Raster %dx%d", static_cast<int>(s.screen),
                s.levelId.empty() ? "-" : s.levelId.c_str(), s.rows, s.cols);
  platform::setCrashContext(note);
  // The new screen exists before the old one goes, so a screen's destructor
  // never runs while nothing is current.
  if (std::unique_ptr<Screen> next = makeScreen(s)) current_ = std::move(next);
}

void Game::update(Ctx& ctx) {
  ctx.animating = false;
  ctx.nextFrameAt = Ctx::kNoFrame;
  const uint32_t built = builtGeneration_;
  ensureScreen();
  // A list drag or fling, and the keyboard focus, belong to the screen they
  // started on.
  const bool fresh = builtGeneration_ != built;
  if (fresh) ctx.drag = DragState{};
  // A click, key or wheel turn may change what was drawn earlier in this
  // frame (a language, a colour, a row above the one pressed), so one more
  // frame shows its whole effect; asked before the screen takes any key.
  const Input& in = ctx.in;
  const bool acted = in.mousePressed || in.mouseReleased || in.rightPressed || in.wheel != 0 || !in.keys.empty();
  focusBeginFrame(fresh);
  if (current_) current_->update(ctx);
  focusEndFrame(ctx);
  // The screen asked to go elsewhere: the next one is built in the next frame.
  if (builtGeneration_ != generation_ || acted) ctx.requestFrameAt(ctx.time);
}

std::unique_ptr<Screen> makeScreen(const GameState& s) {
  switch (s.screen) {
    case ScreenKind::Splash: return makeSplashScreen();
    case ScreenKind::Menu: return makeMenuScreen();
    case ScreenKind::LevelSelect: return makeLevelSelectScreen();
    case ScreenKind::Playing: return makePlayingScreen(s.levelId, s.rows, s.cols);
    case ScreenKind::Solved: return makeSolvedScreen(s.levelId, s.rows, s.cols, s.elapsedMs);
    case ScreenKind::Gallery: return makeGalleryScreen();
    case ScreenKind::Settings: return makeSettingsScreen();
    case ScreenKind::About: return makeAboutScreen();
    case ScreenKind::Licenses: return makeLicensesScreen();
  }
  return nullptr;
}

}  // namespace ui
