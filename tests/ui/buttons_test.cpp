// Buttons, chips and swatches: which one a click presses, and the looks that
// tell a player what a button is doing.
#include "ui/widgets/buttons.h"

#include "tests/ui/widget_frame.h"
#include "ui/widgets/theme.h"

namespace {

class Buttons : public widgettest::WidgetFrame {};

const ui::Rect kButton{100, 100, 200, 50};

TEST_F(Buttons, OfTwoOverlappingButtonsOnlyTheFirstAskedIsPressed) {
  ui::setWidgetTracing(true);
  frame(releaseAt(150, 120));
  EXPECT_TRUE(ui::menuButton(ctx, kButton, "Dialog", true));
  EXPECT_FALSE(ui::plainButton(ctx, ui::Rect{120, 110, 200, 50}, "Beneath", false));
  ASSERT_EQ(ui::widgetTrace().size(), 2u) << "both were drawn";
  EXPECT_EQ(ui::widgetTrace()[1].label, "Beneath");
}

TEST_F(Buttons, AButtonFiresOnTheReleaseNotThePress) {
  frame(pressAt(150, 120));
  EXPECT_FALSE(ui::plainButton(ctx, kButton, "Start", false));
  frame(heldAt(150, 120));
  EXPECT_FALSE(ui::plainButton(ctx, kButton, "Start", false));
  frame(releaseAt(150, 120));
  EXPECT_TRUE(ui::plainButton(ctx, kButton, "Start", false));
  EXPECT_TRUE(ctx.clickTaken);
}

TEST_F(Buttons, AReleaseOnTheRightOrBottomEdgeMisses) {
  frame(releaseAt(300, 120));
  EXPECT_FALSE(ui::menuButton(ctx, kButton, "Start", false));
  frame(releaseAt(150, 150));
  EXPECT_FALSE(ui::difficultyChip(ctx, kButton, "5×6", 0));
  frame(releaseAt(100, 100));
  EXPECT_TRUE(ui::difficultyChip(ctx, kButton, "5×6", 0)) << "the top-left corner is inside";
}

TEST_F(Buttons, ADisabledLetterButtonNeverFiresAndLeavesTheClickToWhatIsBeneath) {
  frame(releaseAt(120, 120));
  EXPECT_FALSE(ui::letterButton(ctx, ui::Rect{100, 100, 40, 40}, "U", true));
  EXPECT_FALSE(ctx.clickTaken);
  EXPECT_TRUE(ui::plainButton(ctx, kButton, "Beneath", false));

  frame(releaseAt(120, 120));
  EXPECT_TRUE(ui::letterButton(ctx, ui::Rect{100, 100, 40, 40}, "U", false));
}

TEST_F(Buttons, ADisabledLetterButtonIsVeiledInTheBackgroundColour) {
  frame(hoverAt(500, 500));
  ui::letterButton(ctx, ui::Rect{100, 100, 40, 40}, "U", true);
  EXPECT_NEAR(alpha(102, 102), 0.7 * 255, 1) << "background at 0.7 over nothing";
  frame(hoverAt(102, 102));
  ui::letterButton(ctx, ui::Rect{100, 100, 40, 40}, "U", false);
  EXPECT_NEAR(alpha(104, 120), 0.9 * 255, 1) << "hovered: panel at 0.9";
  frame(hoverAt(500, 500));
  ui::letterButton(ctx, ui::Rect{100, 100, 40, 40}, "U", false);
  EXPECT_EQ(alpha(104, 120), 0) << "idle: only the letter";
}

TEST_F(Buttons, AMenuButtonHeldDownIsDimmedAndAHoveredOneGlows) {
  // A spot inside the fill, well away from the label and the outline.
  const int fx = 110, fy = 125;
  frame(hoverAt(500, 500));
  ui::menuButton(ctx, kButton, "Go", true);
  EXPECT_EQ(pixel(fx, fy), 0xff000000u | ui::kColorAccent);
  frame(heldAt(150, 120));
  ui::menuButton(ctx, kButton, "Go", true);
  EXPECT_NEAR(alpha(fx, fy), 0.7 * 255, 1) << "pressed: fill at 0.7";
  // Just outside the left edge the outline is blue-grey, the glow orange.
  auto warm = [this] { return ((pixel(99, fy) >> 16) & 255) > (pixel(99, fy) & 255); };
  frame(hoverAt(150, 120));
  ui::menuButton(ctx, kButton, "Go", false);
  EXPECT_EQ(alpha(fx, fy), 255);
  EXPECT_TRUE(warm()) << "hovered: the accent glow around the outline";
  frame(hoverAt(500, 500));
  ui::menuButton(ctx, kButton, "Go", false);
  EXPECT_EQ(rgb(fx, fy), ui::kColorPanel);
  EXPECT_FALSE(warm());
}

TEST_F(Buttons, ChipStatesHaveTheirOwnLooksAndUnknownStatesArePlain) {
  const ui::Rect chip{100, 100, 200, 30};
  frame(hoverAt(500, 500));
  ui::difficultyChip(ctx, chip, "5×6", 0);
  EXPECT_EQ(pixel(106, 115), 0xff000000u | ui::kColorBackground);
  frame(hoverAt(500, 500));
  ui::difficultyChip(ctx, chip, "5×6", 42);
  EXPECT_EQ(pixel(106, 115), 0xff000000u | ui::kColorBackground);

  frame(hoverAt(500, 500));
  ui::difficultyChip(ctx, chip, "5×6", 3);
  EXPECT_NEAR(alpha(106, 115), 0.3 * 255, 1) << "in progress: accent at 0.3";
  frame(hoverAt(106, 115));
  ui::difficultyChip(ctx, chip, "5×6", 3);
  EXPECT_NEAR(alpha(106, 115), 0.42 * 255, 1) << "hovered: 0.12 more";
}

TEST_F(Buttons, ASolvedChipShowsAGreenCheckMarkAtItsRightEnd) {
  const ui::Rect chip{100, 100, 200, 30};
  auto green = [](uint32_t p) { return (p & 0xffffff) == ui::kColorGreen && (p >> 24) == 255; };
  frame(hoverAt(500, 500));
  ui::difficultyChip(ctx, chip, "5×6", 1);
  const widgettest::Bounds check = find(260, 102, 298, 128, green);
  ASSERT_FALSE(check.empty());
  EXPECT_NEAR(check.centreX(), 288, 3) << "centred 12 from the right edge";

  frame(hoverAt(500, 500));
  ui::difficultyChip(ctx, chip, "5×6", 2);
  EXPECT_TRUE(find(260, 102, 298, 128, green).empty());
}

TEST_F(Buttons, ASelectedSwatchIsRingedInAccent) {
  const ui::Rect swatch{100, 100, 44, 34};
  ui::setWidgetTracing(true);
  frame(hoverAt(500, 500));
  ui::colorSwatch(ctx, swatch, 0x4a9eff, true);
  EXPECT_EQ(pixel(122, 117), 0xff4a9effu);
  // The ring is centred on the edge: three wide reaches 1.5 out.
  EXPECT_EQ(pixel(99, 117), 0xff000000u | ui::kColorAccent);
  EXPECT_EQ(pixel(100, 117), 0xff000000u | ui::kColorAccent);
  ASSERT_NE(ui::findTracedWidget("swatch #4a9eff"), nullptr);

  frame(releaseAt(122, 117));
  EXPECT_TRUE(ui::colorSwatch(ctx, swatch, 0x4a9eff, false));
  EXPECT_EQ(pixel(101, 117), 0xff4a9effu) << "one wide: half a unit in";
  EXPECT_LT(alpha(99, 117), 160) << "and half a unit out";
}

}  // namespace
