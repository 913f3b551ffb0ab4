// The widget kit as a player meets it: which widget a click presses, the
// slider and the lists under the pointer, the clock, and text fitted to its
// room or running right to left.
#include <vector>

#include "tests/ui/widget_frame.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/format.h"
#include "ui/widgets/scroll.h"

namespace {

// A list of 1000 in a view 300 high holds a row button that scrolls with it.
class Widgets : public widgettest::WidgetFrame {
 protected:
  bool listFrame(const ui::Input& in) {
    frame(in);
    ui::applyScroll(ctx, ui::Rect{0, 100, 400, 300}, 1000, &offset);
    return ui::menuButton(ctx, ui::Rect{20, 250 - offset, 360, 200}, "Row", false);
  }
  // Press at y 300, move by dy in each of `steps` frames, release there: whether the row was pressed.
  bool drag(double dy, int steps) {
    listFrame(pressAt(200, 300));
    for (int i = 1; i <= steps; ++i) listFrame(heldAt(200, 300 + i * dy, dy));
    return listFrame(releaseAt(200, 300 + steps * dy));
  }
  // The ink of `text` drawn left-aligned at (10, 10), all of it or only what hangs below y `below`.
  widgettest::Bounds drawn(const std::string& text, const ui::TextStyle& style, int below = 0) {
    frame(hoverAt(0, 0));
    ui::drawText(ctx.cr, 10, 10, text, style);
    return find(0, below, 1000, 700, [](uint32_t p) { return p >> 24 != 0; });
  }
  double offset = 0;
};

// "Top" (100..300 x 100..150) is asked first and overlaps "Beneath" (120..320 x 110..160).
TEST_F(Widgets, TheReleaseInsideTheFirstEnabledButtonAskedIsTheOnlyClick) {
  struct Case { const char* what; ui::Input in; bool disabled, top, beneath; };
  const Case kCases[] = {{"release on both", releaseAt(150, 120), false, true, false},
                         {"top one disabled", releaseAt(150, 120), true, false, true},
                         {"press", pressAt(150, 120), false, false, false},
                         {"top-left corner", releaseAt(100, 100), false, true, false},
                         {"right edge of the top one", releaseAt(300, 120), false, false, true},
                         {"bottom edge of the top one", releaseAt(110, 150), false, false, false},
                         {"left of both", releaseAt(99.9, 120), false, false, false},
                         {"right edge of the lower one", releaseAt(320, 130), false, false, false}};
  for (const Case& c : kCases) {
    frame(c.in);
    EXPECT_EQ(ui::letterButton(ctx, ui::Rect{100, 100, 200, 50}, "Top", c.disabled), c.top) << c.what;
    EXPECT_EQ(ui::menuButton(ctx, ui::Rect{120, 110, 200, 50}, "Beneath", false), c.beneath) << c.what;
  }
}

// The track runs from x 100 to 300; the knob is caught up to 12 beside it and 10 above or below.
TEST_F(Widgets, AHeldSliderTakesTheValueUnderThePointerWithinItsRange) {
  struct Case { ui::Input in; double value; };
  const Case kCases[] = {{pressAt(150, 112), 0.25}, {heldAt(250, 112), 0.75}, {heldAt(89, 91), 0},
                         {heldAt(311, 133), 1},     {heldAt(87, 112), 0.5},   {heldAt(150, 89), 0.5},
                         {hoverAt(150, 112), 0.5},  {releaseAt(150, 112), 0.5},
                         {pointer(250, 112, false, true, true), 0.75}};  // a click quicker than a frame
  for (const Case& c : kCases) {
    frame(c.in);
    EXPECT_DOUBLE_EQ(ui::slider(ctx, ui::Rect{100, 100, 200, 24}, 0.5), c.value) << c.in.mouseX << ", " << c.in.mouseY;
    EXPECT_EQ(ctx.clickTaken, c.value != 0.5) << "a dragged slider keeps the release from what is beneath";
    EXPECT_EQ(ctx.animating, c.value != 0.5) << "and asks for every frame while held";
  }
}

TEST_F(Widgets, AListStaysWithinItsContent) {
  struct Case { double start, wheel, end; };
  for (const Case& c : {Case{0, -1, 60}, Case{0, 10, 0}, Case{600, -100, 700}, Case{5000, 0, 700}, Case{-40, 0, 0}}) {
    offset = c.start;
    ui::Input in = hoverAt(200, 300);
    in.wheel = c.wheel;
    listFrame(in);
    EXPECT_DOUBLE_EQ(offset, c.end) << "from " << c.start << ", wheel " << c.wheel;
  }
}

TEST_F(Widgets, AFlickGlidesSlowerEveryFrameUntilItStopsAndAPressCatchesIt) {
  EXPECT_TRUE(drag(-2, 2)) << "moved 4: a tap";
  EXPECT_FALSE(drag(-20, 5)) << "the end of a drag presses nothing";
  std::vector<double> steps;
  for (double last = offset; ctx.drag.velocity != 0 && steps.size() < 600; last = offset) {
    listFrame(hoverAt(200, 300));
    steps.push_back(offset - last);
    EXPECT_TRUE(ctx.animating || ctx.drag.velocity == 0) << "gliding, it asks for every frame";
  }
  EXPECT_LT(steps.size(), 120u) << "stopped within two seconds";
  EXPECT_FALSE(ctx.animating) << "at rest again";
  EXPECT_TRUE(std::is_sorted(steps.rbegin(), steps.rend()) && steps.back() > 0);
  EXPECT_GT(offset, 200);

  drag(-20, 5);
  listFrame(hoverAt(200, 300));
  listFrame(pressAt(200, 300));
  const double caught = offset;
  listFrame(releaseAt(200, 300));
  for (int i = 0; i < 10; ++i) listFrame(hoverAt(200, 300));
  EXPECT_DOUBLE_EQ(offset, caught);
}

TEST(PlayTime, MinutesAndSecondsThenHoursAndNeverNegative) {
  struct Case { long long ms; const char* shown; };
  const Case kCases[] = {{0, "00:00"},         {999, "00:00"},          {61000, "01:01"},  {3599999, "59:59"},
                         {3600000, "1:00:00"}, {36123000, "10:02:03"}, {900000000, "250:00:00"}, {-5000, "00:00"}};
  for (const Case& c : kCases) EXPECT_EQ(ui::formatTime(c.ms), c.shown) << c.ms << " ms";
}

TEST_F(Widgets, ATooWideLineShrinksToItsRoomButNotBelowTheMinimumScale) {
  ui::TextStyle style;
  style.size = 30;
  const std::string line = "Puzzle pieces snap home";
  const double natural = drawn(line, style).right - drawn(line, style).left;
  struct Case { double room, minScale, share; };
  for (const Case& c : {Case{0, 0.1, 1}, Case{1.1, 0.1, 1}, Case{0.75, 0.5, 0.75}, Case{0.5, 0.6, 0.6}}) {
    style.maxWidth = c.room * natural;
    style.minScale = c.minScale;
    const widgettest::Bounds ink = drawn(line, style);
    EXPECT_NEAR(ink.right - ink.left, c.share * natural, 0.03 * natural) << c.room << " of it, at least " << c.minScale;
  }
}

// The p's hang below the Hebrew letters, so they show where the Latin word went.
TEST_F(Widgets, AHebrewLineRunsRightToLeft) {
  ui::TextStyle style;
  style.size = 40;
  const int baseline = drawn("אבג", style).bottom + 2;
  const widgettest::Bounds latin = drawn("pp", style, baseline);
  ASSERT_FALSE(latin.empty());
  EXPECT_EQ(drawn("אבג pp", style, baseline).left, latin.left) << "the Latin word at the line's left end";
  EXPECT_EQ(drawn("pp אבג", style, baseline).left, latin.left) << "a Latin line starts at its left";
}

}  // namespace
