#include "ui/input.h"

#include <SDL.h>
#include <gtest/gtest.h>

namespace {

ui::Ctx releasedAt(double x, double y) {
  ui::Ctx ctx;
  ctx.in.mouseX = x;
  ctx.in.mouseY = y;
  ctx.in.mouseReleased = true;
  return ctx;
}

TEST(ClickArbitration, LeftAndTopEdgesHitRightAndBottomDoNot) {
  const ui::Rect r{10, 20, 30, 40};
  EXPECT_TRUE(releasedAt(10, 20).takeClick(r));
  EXPECT_TRUE(releasedAt(39.999, 59.999).takeClick(r));
  EXPECT_FALSE(releasedAt(40, 30).takeClick(r));
  EXPECT_FALSE(releasedAt(20, 60).takeClick(r));
  EXPECT_FALSE(releasedAt(9.999, 30).takeClick(r));
}

TEST(ClickArbitration, OnlyTheFirstOfTwoOverlappingButtonsTakesTheClick) {
  ui::Ctx ctx = releasedAt(50, 50);
  const ui::Rect dialog{0, 0, 100, 100}, under{40, 40, 20, 20};
  EXPECT_TRUE(ctx.takeClick(dialog));
  EXPECT_TRUE(ctx.clickTaken);
  EXPECT_FALSE(ctx.takeClick(under));
}

TEST(ClickArbitration, AMissDoesNotConsumeTheClick) {
  ui::Ctx ctx = releasedAt(50, 50);
  EXPECT_FALSE(ctx.takeClick(ui::Rect{0, 0, 10, 10}));
  EXPECT_FALSE(ctx.clickTaken);
  EXPECT_TRUE(ctx.takeClick(ui::Rect{45, 45, 10, 10}));
}

TEST(ClickArbitration, APressIsNotAClick) {
  ui::Ctx ctx;
  ctx.in.mouseX = ctx.in.mouseY = 5;
  ctx.in.mousePressed = ctx.in.mouseDown = true;
  EXPECT_FALSE(ctx.takeClick(ui::Rect{0, 0, 10, 10}));
}

TEST(ClickArbitration, RightClicksAnswerEveryRectUnderThePointer) {
  ui::Ctx ctx;
  ctx.in.mouseX = ctx.in.mouseY = 5;
  ctx.in.rightPressed = true;
  EXPECT_TRUE(ctx.takeRightClick(ui::Rect{0, 0, 10, 10}));
  EXPECT_TRUE(ctx.takeRightClick(ui::Rect{4, 4, 10, 10}));
  EXPECT_FALSE(ctx.takeRightClick(ui::Rect{6, 6, 10, 10}));
  EXPECT_FALSE(ctx.clickTaken);
}

TEST(FrameInput, KeysAreLookedUpAndResetEachFrame) {
  ui::Input in;
  EXPECT_FALSE(in.hasKey(SDLK_q));
  in.keys = {SDLK_a, SDLK_q, SDLK_a};
  in.mouseX = 3;
  in.wheel = 2;
  in.mouseDown = in.doubleClick = in.ctrl = true;
  EXPECT_TRUE(in.hasKey(SDLK_q));
  in.reset();
  EXPECT_FALSE(in.hasKey(SDLK_q));
  EXPECT_TRUE(in.keys.empty());
  EXPECT_EQ(in.mouseX, 0);
  EXPECT_EQ(in.wheel, 0);
  EXPECT_FALSE(in.mouseDown || in.doubleClick || in.ctrl);
}

}  // namespace
