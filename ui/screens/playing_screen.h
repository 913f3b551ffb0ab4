// The screen a puzzle is played on. It owns the puzzle, lays it out for the
// window every frame, turns pointer and keys into picks, drags, drops, turns,
// zoom, pan and undo, keeps the play clock, saves shortly after every change
// and, once the last piece is home, records the solve and moves on.
//
// Pointer, per frame (board area; the tray strips and header come first):
//   left press on a loose piece   -> picked up, raised, held by the grab point
//   left press on empty table     -> pans while held, when zoomed in
//   left release while holding    -> dropped: snaps home or stays put
//   right press on a loose piece  -> turned one step (by the rotation setting)
//   middle drag, or space + drag  -> pans, when zoomed in
//   wheel                         -> zooms about the pointer (unless zoom is off)
#pragma once

#include <string>
#include <vector>

#include "core/puzzle.h"
#include "store/settings.h"
#include "ui/game.h"
#include "ui/screens/board_view.h"
#include "ui/screens/piece_sprites.h"
#include "ui/screens/tray_strips.h"

namespace ui {

class PlayingScreen : public Screen {
 public:
  PlayingScreen(std::string levelId, int rows, int cols);
  void update(Ctx& ctx) override;
  void saveNow() override;

  // For tests and tools: the state the screen plays on.
  const core::Puzzle& puzzle() const { return puzzle_; }
  core::Puzzle& puzzle() { return puzzle_; }
  const BoardView& view() const { return view_; }
  const TrayStrips& tray() const { return tray_; }
  bool paused() const { return paused_; }
  bool dialogOpen() const { return dialog_ != Dialog::None; }
  bool solved() const { return solvedAt_ >= 0; }
  // Where the turning hint shows this frame; empty when it does not.
  const Rect& hintRect() const { return hint_; }
  // Keyboard play: the piece picked with Tab (-1 none) and the cell cursor.
  int picked() const { return picked_; }
  int cursorRow() const { return cursorRow_; }
  int cursorCol() const { return cursorCol_; }

 private:
  enum class Dialog { None, Restart, Shuffle };

  // Flow (playing_screen.cpp).
  void firstFrame(const Ctx& ctx, const store::Settings& settings);
  void advanceClock(const Ctx& ctx);
  void checkSolved(const Ctx& ctx);
  void autosave(const Ctx& ctx, bool force);
  void requestFrames(Ctx& ctx) const;
  bool piecesGliding() const;
  void leave(const Ctx& ctx);
  void writeSave();
  void drawScreen(Ctx& ctx, const store::Settings& settings);
  void handleDialog(Ctx& ctx, const store::Settings& settings);
  void restartGame(const store::Settings& settings);
  void shuffleGame(const store::Settings& settings);

  // Input (playing_input.cpp).
  void handleInput(Ctx& ctx, store::Settings& settings);
  void handleKeys(Ctx& ctx, const store::Settings& settings);
  void handlePausedKeys(const Ctx& ctx);
  void handlePointer(Ctx& ctx, const store::Settings& settings);
  void pickUp(core::Piece& piece, double bx, double by, const store::Settings& settings);
  void dropHeld(const store::Settings& settings);
  void letGo();
  void turn(core::Piece& piece, const store::Settings& settings);
  bool handleTray(Ctx& ctx, const store::Settings& settings);
  void stepZoom(double delta, const Ctx& ctx);
  bool zoomEnabled(const store::Settings& settings) const;

  // Keyboard play (playing_keys.cpp).
  bool handlePieceKey(Ctx& ctx, int32_t key, const store::Settings& settings);
  void pickNext(int step);
  void putDown(const store::Settings& settings);
  void moveCursor(int dRow, int dCol);
  void showPicked(const Ctx& ctx, bool cursor);
  void drawKeyboardMarks(Ctx& ctx);
  // The loose pieces in the order Tab visits them: the tray strips first,
  // then the table in reading order of where the pieces lie.
  std::vector<int> pickOrder();

  // Drawing (playing_draw.cpp).
  // The board and the pieces at rest, cached while nothing on them changes.
  void drawTable(const Ctx& ctx, const store::Settings& settings, const Rect* clip);
  uint64_t tableSignature(const Ctx& ctx, const store::Settings& settings, const Rect* clip) const;
  void drawBoard(const store::Settings& settings);
  // The pieces on the table, or only the piece in hand.
  void drawPieces(const store::Settings& settings, bool held);
  void drawTray(const store::Settings& settings);
  void easePieces(double dt, bool still);

  // Header and overlays (playing_header.cpp).
  double headerHeightFor(const Ctx& ctx, const store::Settings& settings) const;
  void drawHeader(Ctx& ctx, const store::Settings& settings);
  void drawControls(Ctx& ctx, const store::Settings& settings, double y, double h);
  void drawPause(Ctx& ctx);
  void drawHints(Ctx& ctx, const store::Settings& settings);
  bool hidesSomething(const Rect& r) const;
  void drawSolvedBanner(Ctx& ctx);

  core::Puzzle puzzle_;
  BoardView view_;
  TrayStrips tray_;
  PieceSprites sprites_;
  std::vector<const core::Piece*> drawOrder_;  // kept across frames
  uint64_t tableDrawn_ = 0;  // the signature of the table in its cached texture

  double headerH_ = 0;
  bool first_ = true;
  double prevTime_ = -1;
  double clockCarryMs_ = 0;  // the fraction of a millisecond the clock owes
  int64_t savedClockMs_ = 0;  // the play time in the last save
  double startedAt_ = 0;
  bool dirty_ = false;
  double lastSave_ = -1e9;
  bool landscape_ = true;  // the window's shape in the last frame
  double solvedAt_ = -1;
  Dialog dialog_ = Dialog::None;
  bool paused_ = false;
  bool wasActive_ = true;

  int held_ = -1;  // index of the piece in hand
  double pointerX_ = 0, pointerY_ = 0;  // where the pointer was last seen over the game
  double lastW_ = 0, lastH_ = 0;
  Rect hint_;
  double grabX_ = 0, grabY_ = 0;
  bool panning_ = false;
  // The view before a pickup zoomed out to the whole board, to return to.
  bool pickupZoomed_ = false;
  BoardView beforePickup_;

  int picked_ = -1;  // index of the piece picked with Tab
  int cursorRow_ = 0, cursorCol_ = 0;
  int pickSlot_ = 0;  // the place in the Tab order a put-down piece left
  std::vector<int> pickOrder_;  // kept across frames
};

}  // namespace ui
