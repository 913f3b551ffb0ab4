#include "ui/game.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/crash.h"

namespace {

using ui::Game;
using ui::GameState;
using ui::ScreenKind;

GameState state(ScreenKind kind, const std::string& level = "", int rows = 0, int cols = 0) {
  GameState s;
  s.screen = kind;
  s.levelId = level;
  s.rows = rows;
  s.cols = cols;
  return s;
}

TEST(ScreenStack, StartsWithOneSplashRecordAndBuildsOnFirstUpdate) {
  Game game;
  ASSERT_EQ(game.stack().size(), 1u);
  EXPECT_EQ(game.top().screen, ScreenKind::Splash);
  EXPECT_EQ(game.current(), nullptr);
  game.ensureScreen();
  EXPECT_NE(game.current(), nullptr);
}

TEST(ScreenStack, NavigationIsDeferredToTheNextUpdate) {
  Game game;
  game.ensureScreen();
  ui::Screen* splash = game.current();
  game.push(state(ScreenKind::Menu));
  EXPECT_EQ(game.current(), splash) << "the navigating screen runs to the end of its frame";
  game.ensureScreen();
  EXPECT_NE(game.current(), splash);
}

TEST(ScreenStack, EveryOperationCountsAGeneration) {
  Game game;
  game.push(state(ScreenKind::Menu));
  game.replace(state(ScreenKind::Gallery));
  game.pop();
  game.resetTo(state(ScreenKind::About));
  EXPECT_EQ(game.generation(), 4u);
  ASSERT_EQ(game.stack().size(), 1u);
  EXPECT_EQ(game.top().screen, ScreenKind::About);
}

TEST(ScreenStack, PoppingTheLastRecordKeepsItButRebuildsItsScreen) {
  Game game;
  game.ensureScreen();
  const ui::Screen* before = game.current();
  game.pop();
  ASSERT_EQ(game.stack().size(), 1u);
  game.ensureScreen();
  EXPECT_NE(game.current(), before);
}

TEST(ScreenStack, PushThenPopInOneFrameRebuildsTheFirstScreen) {
  Game game;
  game.ensureScreen();
  const ui::Screen* before = game.current();
  game.push(state(ScreenKind::Settings));
  game.pop();
  game.ensureScreen();
  EXPECT_EQ(game.top().screen, ScreenKind::Splash);
  EXPECT_NE(game.current(), before) << "a fresh object, not the old one";
}

TEST(ScreenStack, WithoutOperationsTheScreenIsKept) {
  Game game;
  game.ensureScreen();
  const ui::Screen* built = game.current();
  game.ensureScreen();
  game.ensureScreen();
  EXPECT_EQ(game.current(), built);
}

TEST(ScreenStack, AnUnknownKindKeepsThePreviousScreenRunning) {
  Game game;
  game.ensureScreen();
  const ui::Screen* before = game.current();
  game.push(state(static_cast<ScreenKind>(9)));
  game.ensureScreen();
  EXPECT_EQ(game.current(), before);
}

TEST(ScreenStack, RebuildLeavesACrashContextNote) {
  Game game;
  game.resetTo(state(ScreenKind::Menu));
  game.ensureScreen();
  EXPECT_STREQ(platform::crashContext(), "Bildschirm 1, Bild -, Raster 0x0");
  game.push(state(ScreenKind::Playing, "level7", 6, 7));
  game.ensureScreen();
  EXPECT_STREQ(platform::crashContext(), "Bildschirm 3, Bild level7, Raster 6x7");
}

TEST(ScreenStack, ReplaceOverwritesOnlyTheTop) {
  Game game;
  game.push(state(ScreenKind::Menu));
  game.push(state(ScreenKind::Playing, "level2", 5, 6));
  GameState solved = state(ScreenKind::Solved, "level2", 5, 6);
  solved.elapsedMs = 61000;
  game.replace(solved);
  ASSERT_EQ(game.stack().size(), 3u);
  EXPECT_EQ(game.stack()[1].screen, ScreenKind::Menu);
  EXPECT_EQ(game.top().screen, ScreenKind::Solved);
  EXPECT_EQ(game.top().elapsedMs, 61000);
  game.pop();
  EXPECT_EQ(game.top().screen, ScreenKind::Menu);
}

TEST(ScreenStack, ARebuildForgetsTheListDragOfTheOldScreen) {
  Game game;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 64, 64);
  ui::Ctx ctx;
  ctx.cr = cairo_create(surface);
  ctx.width = ctx.height = 64;
  game.update(ctx);
  const double offset = 0;
  ctx.drag.active = true;
  ctx.drag.velocity = 300;
  ctx.drag.target = &offset;
  game.update(ctx);
  EXPECT_EQ(ctx.drag.target, &offset) << "kept across frames of one screen";
  game.push(state(ScreenKind::Menu));
  game.update(ctx);
  EXPECT_FALSE(ctx.drag.active);
  EXPECT_EQ(ctx.drag.velocity, 0);
  EXPECT_EQ(ctx.drag.target, nullptr);
  cairo_destroy(ctx.cr);
  cairo_surface_destroy(surface);
}

TEST(ScreenStack, InstanceIsOneObject) { EXPECT_EQ(&Game::instance(), &Game::instance()); }

}  // namespace
