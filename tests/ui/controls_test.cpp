// The slider and the on/off row: what they show and what they return.
#include "ui/widgets/controls.h"

#include "tests/ui/widget_frame.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/theme.h"

namespace {

class Controls : public widgettest::WidgetFrame {};

// Track from x 100 to 300, centred on y 112.
const ui::Rect kSlider{100, 100, 200, 24};
constexpr int kTrackY = 112;

bool isOpaque(uint32_t p, uint32_t rgb) { return p == (0xff000000u | rgb); }

TEST_F(Controls, ASliderValueAboveOneIsDrawnAtTheRightEndAndReturnedAsItWas) {
  frame(hoverAt(600, 600));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 1.7), 1.7) << "not dragged: unchanged";
  EXPECT_TRUE(isOpaque(pixel(308, kTrackY), ui::kColorAccent)) << "the knob's ring at the right end";
  EXPECT_TRUE(isOpaque(pixel(300, kTrackY), ui::kColorBackground)) << "the knob's centre";
  EXPECT_TRUE(isOpaque(pixel(200, kTrackY), ui::kColorAccent)) << "filled all the way";
  EXPECT_TRUE(ink(312, 90, 1000, 140).empty()) << "nothing past the knob";
}

TEST_F(Controls, ASliderValueBelowZeroIsDrawnAtTheLeftEndWithNoFill) {
  frame(hoverAt(600, 600));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, -0.4), -0.4);
  EXPECT_TRUE(isOpaque(pixel(92, kTrackY), ui::kColorAccent));
  EXPECT_TRUE(isOpaque(pixel(100, kTrackY), ui::kColorBackground));
  EXPECT_TRUE(isOpaque(pixel(150, kTrackY), ui::kColorBorder)) << "the bare track";
  EXPECT_TRUE(ink(0, 90, 88, 140).empty());
}

TEST_F(Controls, DraggingSetsTheValueFromThePointerAndTakesTheClick) {
  frame(pressAt(150, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.9), 0.25);
  EXPECT_TRUE(ctx.clickTaken);
  frame(heldAt(250, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.25), 0.75);
  EXPECT_TRUE(isOpaque(pixel(240, kTrackY), ui::kColorAccent)) << "drawn at the new value";
  EXPECT_TRUE(isOpaque(pixel(270, kTrackY), ui::kColorBorder));
  frame(heldAt(5000, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.75), 0.75) << "far away the slider lets go";
}

TEST_F(Controls, TheKnobCanBeCaughtAlittleOutsideTheTrack) {
  frame(heldAt(89, 91));  // 11 left, 9 above
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.5), 0.0) << "clamped to the left end";
  frame(heldAt(311, 133));  // 11 right, 9 below
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.5), 1.0);
  frame(heldAt(87, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.5), 0.5) << "13 left is too far";
  frame(heldAt(150, 89));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.5), 0.5) << "11 above is too far";
  EXPECT_FALSE(ctx.clickTaken);
}

TEST_F(Controls, ASliderIsOnlyMovedWithTheButtonHeld) {
  frame(hoverAt(150, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.9), 0.9);
  frame(releaseAt(150, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, kSlider, 0.9), 0.9);
  EXPECT_TRUE(ui::plainButton(ctx, kSlider, "beneath", false)) << "a release is not a drag";
}

TEST_F(Controls, AZeroWidthSliderCannotBeDragged) {
  frame(heldAt(100, kTrackY));
  EXPECT_DOUBLE_EQ(ui::slider(ctx, ui::Rect{100, 100, 0, 24}, 0.3), 0.3);
  EXPECT_FALSE(ctx.clickTaken);
}

const ui::Rect kRow{100, 100, 400, 48};
// The switch spans x 442..494, y 110..138; its knob sits at 456 (off) or 480 (on).
constexpr int kSwitchY = 124;

TEST_F(Controls, AToggleRowFlipsOnAClickAnywhereInItAndReturnsTheNewState) {
  frame(releaseAt(105, 105));
  EXPECT_TRUE(ui::toggleRow(ctx, kRow, "Sound", false)) << "on the label";
  frame(releaseAt(470, kSwitchY));
  EXPECT_FALSE(ui::toggleRow(ctx, kRow, "Sound", true)) << "on the switch";
  frame(releaseAt(300, 147));
  EXPECT_TRUE(ui::toggleRow(ctx, kRow, "Sound", false)) << "in the empty middle";
  frame(releaseAt(300, 148));
  EXPECT_FALSE(ui::toggleRow(ctx, kRow, "Sound", false)) << "below the row";
  frame(hoverAt(300, 120));
  EXPECT_TRUE(ui::toggleRow(ctx, kRow, "Sound", true)) << "no click, no change";
}

TEST_F(Controls, TheSwitchIsDrawnInTheStateItReturns) {
  frame(releaseAt(300, 120));
  ASSERT_TRUE(ui::toggleRow(ctx, kRow, "Sound", false));
  EXPECT_TRUE(isOpaque(pixel(480, kSwitchY), ui::kColorBackground)) << "knob on the right";
  EXPECT_TRUE(isOpaque(pixel(456, kSwitchY), ui::kColorAccent));

  frame(hoverAt(600, 600));
  ui::toggleRow(ctx, kRow, "Sound", false);
  EXPECT_TRUE(isOpaque(pixel(456, kSwitchY), ui::kColorBackground)) << "knob on the left";
  EXPECT_TRUE(isOpaque(pixel(480, kSwitchY), ui::kColorBorder));
}

}  // namespace
