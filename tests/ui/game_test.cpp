#include "ui/game.h"

#include <gtest/gtest.h>

#include "platform/crash.h"

namespace {

using ui::Game;
using ui::GameState;
using ui::ScreenKind;

GameState state(ScreenKind kind, const char* level = "", int rows = 0, int cols = 0) {
  GameState s;
  s.screen = kind;
  s.levelId = level;
  s.rows = rows;
  s.cols = cols;
  return s;
}

TEST(ScreenStack, NavigationIsDeferredAndRebuildsWhateverIsOnTop) {
  Game game;
  game.ensureScreen();
  const ui::Screen* splash = game.current();
  game.push(state(ScreenKind::Settings));
  EXPECT_EQ(game.current(), splash) << "the navigating screen runs to the end of its frame";
  game.pop();
  game.ensureScreen();
  EXPECT_NE(game.current(), splash) << "push and pop in one frame still give a fresh screen";
  const ui::Screen* fresh = game.current();
  game.ensureScreen();
  EXPECT_EQ(game.current(), fresh) << "no operation, no rebuild";
  game.push(state(static_cast<ScreenKind>(9)));
  game.ensureScreen();
  EXPECT_EQ(game.current(), fresh) << "an unknown kind keeps the screen running";
}

TEST(ScreenStack, ARebuildNotesTheScreenForCrashReportsAndDropsTheOldListDrag) {
  Game game;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 64, 64);
  ui::Ctx ctx;
  ctx.cr = cairo_create(surface);
  ctx.width = ctx.height = 64;
  game.resetTo(state(ScreenKind::Menu));
  game.update(ctx);
  const double offset = 0;
  ctx.drag = ui::DragState{true, 10, 300, &offset};
  game.update(ctx);
  EXPECT_EQ(ctx.drag.target, &offset) << "kept across frames of one screen";
  game.push(state(ScreenKind::Playing, "level7", 6, 7));
  game.update(ctx);
  EXPECT_STREQ(platform::crashContext(), "Bildschirm 3, Bild level7, Raster 6x7");
  EXPECT_FALSE(ctx.drag.active);
  EXPECT_EQ(ctx.drag.target, nullptr);
  cairo_destroy(ctx.cr);
  cairo_surface_destroy(surface);
}

}  // namespace
