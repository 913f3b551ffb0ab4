// The vector icons: where their shapes fall, and that they leave the
// caller's drawing state alone.
#include "ui/widgets/icons.h"

#include "tests/ui/widget_frame.h"
#include "ui/widgets/theme.h"

namespace {

class Icons : public widgettest::WidgetFrame {
 protected:
  void SetUp() override {
    WidgetFrame::SetUp();
    frame(hoverAt(0, 0));
  }
};

constexpr uint32_t kWhite = 0xffffff;

TEST_F(Icons, TrianglesPointWhereTheyAreTold) {
  // Size 40 about (100, 100): apex 20 out, base 14 back.
  struct Case {
    int direction;
    int apexX, apexY;  // just inside the apex
    int backX, backY;  // just behind the base
  };
  for (const Case& c : {Case{0, 100, 82, 100, 116}, Case{1, 118, 100, 84, 100}, Case{2, 100, 118, 100, 84},
                        Case{3, 82, 100, 116, 100}, Case{9, 82, 100, 116, 100}}) {
    frame(hoverAt(0, 0));
    ui::drawTriangleIcon(ctx.cr, 100, 100, 40, c.direction, kWhite, 1.0);
    EXPECT_GT(alpha(c.apexX, c.apexY), 0) << "direction " << c.direction;
    EXPECT_EQ(alpha(c.backX, c.backY), 0) << "direction " << c.direction;
    const widgettest::Bounds b = ink(0, 0, 200, 200);
    EXPECT_EQ(b.right - b.left + 1 + b.bottom - b.top + 1, 40 + 34) << "40 across the base, 34 deep";
  }
}

TEST_F(Icons, TheLockHasAShackleAboveItsBodyAndAKeyholeInIt) {
  // Size 100 about (100, 100): body (69, 89, 62, 50), shackle radius 19.84 about (100, 87).
  ui::drawLockIcon(ctx.cr, 100, 100, 100, kWhite, 1.0);
  EXPECT_EQ(pixel(75, 130), 0xffffffffu) << "the body";
  EXPECT_EQ(rgb(100, 114), ui::kColorBackground) << "the keyhole";
  EXPECT_EQ(alpha(100, 114), 255);
  EXPECT_GT(alpha(100, 67), 0) << "the top of the shackle";
  EXPECT_EQ(alpha(100, 80), 0) << "the shackle is open beneath";
  const widgettest::Bounds b = ink(0, 0, 200, 200);
  EXPECT_EQ(b.bottom, 138);
  EXPECT_EQ(b.left, 69);
}

TEST_F(Icons, TheShuffleArrowsPointRightOnBothRows) {
  // Size 100: rows at y 72.5 and 127.5; the strands start at x 50 and end
  // at 137.5 in round caps 5.5 wide, under arrowheads reaching x 140.
  ui::drawShuffleIcon(ctx.cr, 100, 100, 100, kWhite, 1.0);
  const widgettest::Bounds b = ink(0, 0, 200, 200);
  EXPECT_EQ(b.left, 50 - 6);
  EXPECT_EQ(b.right, 143 - 1);
  EXPECT_GT(alpha(137, 72), 0);
  EXPECT_GT(alpha(137, 127), 0);
  EXPECT_EQ(alpha(137, 100), 0) << "nothing between the arrowheads";
  EXPECT_GT(alpha(100, 100), 0) << "the strands cross in the middle";
}

TEST_F(Icons, IconsLeaveTheLineSettingsAsTheyFoundThem) {
  cairo_t* cr = ctx.cr;
  cairo_set_line_width(cr, 7);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_SQUARE);
  ui::drawShuffleIcon(cr, 50, 50, 30, kWhite, 1.0);
  ui::drawLockIcon(cr, 50, 50, 30, kWhite, 1.0);
  ui::drawClockIcon(cr, 50, 50, 30, kWhite, 1.0);
  ui::drawTriangleIcon(cr, 50, 50, 30, 0, kWhite, 1.0);
  EXPECT_EQ(cairo_get_line_width(cr), 7);
  EXPECT_EQ(cairo_get_line_cap(cr), CAIRO_LINE_CAP_SQUARE);
}

}  // namespace
