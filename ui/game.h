// The screen stack. Screens navigate by pushing, popping, replacing or
// resetting value records; the live screen is rebuilt from the top record at
// the start of the next update, so a screen that navigates during its own
// update runs to the end of it, and several operations in one frame lead to a
// single rebuild of whatever is on top then. Screens are never kept alive
// underneath one another: going back rebuilds the previous screen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/input.h"

namespace ui {

enum class ScreenKind : int32_t {
  Splash = 0,
  Menu = 1,
  LevelSelect = 2,
  Playing = 3,
  Solved = 4,
  Gallery = 5,
  Settings = 6,
  About = 7,
  Licenses = 8,
};

struct GameState {
  ScreenKind screen = ScreenKind::Splash;
  std::string levelId;  // Playing, Solved
  int32_t rows = 0, cols = 0;
  int64_t elapsedMs = 0;  // handed on to the solved screen
};

class Screen {
 public:
  virtual ~Screen() = default;
  // Handles the frame's input and draws the frame, in one call.
  virtual void update(Ctx& ctx) = 0;
  // The game is ending: whatever would be saved a moment later is saved now.
  virtual void saveNow() {}
};

class Game {
 public:
  static Game& instance();

  void push(const GameState& s);
  void pop();
  void replace(const GameState& s);
  void resetTo(const GameState& s);
  // The one way back, for back buttons and Escape alike: to the screen
  // below, or to the menu when the top screen was the first one shown
  // (a puzzle started directly, or a screen chosen at start).
  void back();
  void ensureScreen();
  void update(Ctx& ctx);
  void saveNow() {
    if (current_) current_->saveNow();
  }

  const std::vector<GameState>& stack() const { return stack_; }
  const GameState& top() const { return stack_.back(); }
  Screen* current() const { return current_.get(); }
  uint32_t generation() const { return generation_; }

  Game();

 private:
  std::vector<GameState> stack_;
  std::unique_ptr<Screen> current_;
  uint32_t generation_ = 0;
  uint32_t builtGeneration_ = 0xFFFFFFFFu;  // so the first update always builds
};

// Builds the screen for a record; null for a kind outside the table.
std::unique_ptr<Screen> makeScreen(const GameState& s);

}  // namespace ui
