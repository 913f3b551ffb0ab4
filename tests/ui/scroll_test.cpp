// Kinetic scrolling as a player feels it: the wheel, dragging, flinging, and
// that the end of a drag does not press the button it ends on.
#include "ui/widgets/scroll.h"

#include "tests/ui/widget_frame.h"
#include "ui/widgets/buttons.h"

namespace {

const ui::Rect kView{0, 100, 400, 300};
constexpr double kContent = 1000;  // scrolls by up to 700

class Scrolling : public widgettest::WidgetFrame {
 protected:
  // A list frame as a screen runs it: the scroll first, then a row of the
  // list, a button that moves with the content.
  bool listFrame(const ui::Input& in, double content = kContent) {
    frame(in);
    ui::applyScroll(ctx, kView, content, &offset);
    return ui::menuButton(ctx, ui::Rect{20, 250 - offset, 360, 200}, "Row", false);
  }
  ui::Input wheelAt(double x, double y, double units) {
    ui::Input in = hoverAt(x, y);
    in.wheel = units;
    return in;
  }
  // Press at (200, 300), move by `dy` in each of `steps` frames, release.
  bool drag(double dy, int steps, double content = kContent) {
    double y = 300;
    listFrame(pressAt(200, y), content);
    for (int i = 0; i < steps; ++i) {
      y += dy;
      listFrame(heldAt(200, y, dy), content);
    }
    return listFrame(releaseAt(200, y), content);
  }

  double offset = 0;
};

TEST_F(Scrolling, EachWheelUnitMovesSixtyAndTheEndsHold) {
  listFrame(wheelAt(200, 300, -1));
  EXPECT_DOUBLE_EQ(offset, 60);
  listFrame(wheelAt(200, 300, -2.5));
  EXPECT_DOUBLE_EQ(offset, 210);
  listFrame(wheelAt(200, 300, 10));
  EXPECT_DOUBLE_EQ(offset, 0);
  listFrame(wheelAt(200, 300, -100));
  EXPECT_DOUBLE_EQ(offset, 700);
  listFrame(wheelAt(200, 50, 3));
  EXPECT_DOUBLE_EQ(offset, 700) << "the wheel outside the list does nothing";
}

TEST_F(Scrolling, AnOffsetOutOfRangeIsBroughtBack) {
  offset = 5000;
  listFrame(hoverAt(900, 900));
  EXPECT_DOUBLE_EQ(offset, 700);
  offset = -40;
  listFrame(hoverAt(900, 900));
  EXPECT_DOUBLE_EQ(offset, 0);
}

TEST_F(Scrolling, DraggingMovesTheListWithThePointer) {
  listFrame(pressAt(200, 300));
  listFrame(heldAt(200, 280, -20));
  EXPECT_DOUBLE_EQ(offset, 20);
  listFrame(heldAt(200, 250, -30));
  EXPECT_DOUBLE_EQ(offset, 50);
  listFrame(heldAt(200, 260, 10));
  EXPECT_DOUBLE_EQ(offset, 40);
}

TEST_F(Scrolling, ADragOfMoreThanFiveDoesNotPressTheButtonItEndsOn) {
  EXPECT_FALSE(drag(-3, 2)) << "moved 6";
  EXPECT_TRUE(ctx.clickTaken);
}

TEST_F(Scrolling, AShortDragIsATap) {
  EXPECT_TRUE(drag(-2, 2)) << "moved 4";
  offset = 0;
  EXPECT_TRUE(drag(-5, 1)) << "moved exactly 5";
}

TEST_F(Scrolling, ALongDragTakesTheClickWhileStillHeld) {
  listFrame(pressAt(200, 300));
  listFrame(heldAt(200, 296, -4));
  EXPECT_FALSE(ctx.clickTaken);
  listFrame(heldAt(200, 292, -4));
  EXPECT_TRUE(ctx.clickTaken);
}

TEST_F(Scrolling, MotionInTheFrameOfThePressIsNotADrag) {
  offset = 100;
  ui::Input pressed = pressAt(200, 300);
  pressed.dy = 30;
  listFrame(pressed);
  EXPECT_DOUBLE_EQ(offset, 100);
  EXPECT_TRUE(listFrame(releaseAt(200, 300))) << "still a click";
}

TEST_F(Scrolling, ShortContentNeitherScrollsNorFlings) {
  const double shortContent = 250;
  listFrame(wheelAt(200, 300, -3), shortContent);
  EXPECT_DOUBLE_EQ(offset, 0);
  EXPECT_FALSE(ctx.drag.active);
  drag(-20, 5, shortContent);
  EXPECT_DOUBLE_EQ(offset, 0);
  for (int i = 0; i < 10; ++i) listFrame(hoverAt(200, 300), shortContent);
  EXPECT_DOUBLE_EQ(offset, 0);
  EXPECT_DOUBLE_EQ(ctx.drag.velocity, 0);
}

TEST_F(Scrolling, AFlingGlidesOnAndSlowsToAStop) {
  drag(-20, 5);
  const double released = offset;
  ASSERT_DOUBLE_EQ(released, 100);
  ASSERT_GT(ctx.drag.velocity, 900) << "about 20 units a frame at 60 frames a second";

  double last = offset, lastStep = 1e9;
  int frames = 0;
  while (ctx.drag.velocity != 0 && frames < 600) {
    listFrame(hoverAt(200, 300));
    const double step = offset - last;
    EXPECT_GT(step, 0);
    EXPECT_LT(step, lastStep) << "every frame slower than the one before";
    last = offset;
    lastStep = step;
    ++frames;
  }
  EXPECT_LT(frames, 120) << "stops within two seconds";
  EXPECT_GT(offset, released + 100);
  const double stopped = offset;
  for (int i = 0; i < 30; ++i) listFrame(hoverAt(200, 300));
  EXPECT_DOUBLE_EQ(offset, stopped);
}

TEST_F(Scrolling, AFlingStopsAtTheEnd) {
  offset = 600;
  drag(-20, 5);
  for (int i = 0; i < 10; ++i) listFrame(hoverAt(200, 300));
  EXPECT_DOUBLE_EQ(offset, 700);
  EXPECT_DOUBLE_EQ(ctx.drag.velocity, 0);
}

TEST_F(Scrolling, APressStopsAGlide) {
  drag(-20, 5);
  listFrame(hoverAt(200, 300));
  listFrame(pressAt(200, 300));
  EXPECT_DOUBLE_EQ(ctx.drag.velocity, 0);
  const double caught = offset;
  listFrame(heldAt(200, 300));
  listFrame(releaseAt(200, 300));
  listFrame(hoverAt(200, 300));
  EXPECT_DOUBLE_EQ(offset, caught);
}

TEST_F(Scrolling, OnlyTheDraggedListMovesOrGlides) {
  double other = 50;
  const ui::Rect otherView{500, 100, 400, 300};
  auto both = [&](const ui::Input& in) {
    frame(in);
    ui::applyScroll(ctx, kView, kContent, &offset);
    ui::applyScroll(ctx, otherView, kContent, &other);
  };
  both(pressAt(200, 300));
  both(heldAt(200, 280, -20));
  both(heldAt(200, 260, -20));
  both(releaseAt(200, 260));
  for (int i = 0; i < 20; ++i) both(hoverAt(200, 300));
  EXPECT_GT(offset, 40);
  EXPECT_DOUBLE_EQ(other, 50);
}

class Scrollbar : public widgettest::WidgetFrame {};

auto muted = [](uint32_t p) { return (p >> 24) != 0; };

TEST_F(Scrollbar, TheThumbShowsTheVisibleShareAtItsPlace) {
  // Viewport (0, 0, 400, 300), content 600, halfway down: a thumb of
  // 300 x 292 / 600 = 146 from y 4 + (292 - 146) / 2 = 77, at x 392..396.
  frame(hoverAt(0, 0));
  ui::scrollbar(ctx, ui::Rect{0, 0, 400, 300}, 600, 150);
  const widgettest::Bounds thumb = find(0, 0, 1000, 700, muted);
  EXPECT_EQ(thumb.left, 392);
  EXPECT_EQ(thumb.right, 395);
  EXPECT_EQ(thumb.top, 77);
  EXPECT_EQ(thumb.bottom, 77 + 146 - 1);
  EXPECT_EQ(alpha(394, 150), 128) << "muted at half alpha";
}

TEST_F(Scrollbar, AVeryLongListStillHasAThumbThirtyHigh) {
  frame(hoverAt(0, 0));
  ui::scrollbar(ctx, ui::Rect{0, 100, 400, 300}, 100000, 100000 - 300);
  const widgettest::Bounds thumb = find(0, 0, 1000, 700, muted);
  EXPECT_EQ(thumb.bottom - thumb.top + 1, 30);
  EXPECT_EQ(thumb.bottom, 100 + 300 - 4 - 1) << "at the end of the track";
}

TEST_F(Scrollbar, ContentThatFitsHasNoScrollbar) {
  frame(hoverAt(0, 0));
  ui::scrollbar(ctx, ui::Rect{0, 0, 400, 300}, 300, 0);
  ui::scrollbar(ctx, ui::Rect{0, 0, 400, 300}, 120, 0);
  EXPECT_TRUE(ink(0, 0, 1000, 700).empty());
}

}  // namespace
