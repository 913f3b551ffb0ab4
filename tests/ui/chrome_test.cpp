// The frame every screen puts around itself: back button, header, the wavy
// title and the footer.
#include "ui/widgets/chrome.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "i18n/i18n.h"
#include "tests/ui/widget_frame.h"
#include "ui/widgets/theme.h"

namespace {

class Chrome : public widgettest::WidgetFrame {
 protected:
  void SetUp() override {
    WidgetFrame::SetUp();
    i18n::setLanguage("en");
  }
};

TEST_F(Chrome, TheBackButtonSitsFurtherInOnALargeWindow) {
  resize(900, 620);
  ui::Rect r = ui::backButtonRect(ctx);
  EXPECT_EQ(r.x, 16);
  EXPECT_EQ(r.y, 16);
  EXPECT_EQ(r.w, 130);
  EXPECT_EQ(r.h, 34);
  for (auto [w, h] : {std::pair{899, 620}, std::pair{900, 619}}) {
    resize(w, h);
    r = ui::backButtonRect(ctx);
    EXPECT_EQ(r.x, 12) << w << " x " << h;
    EXPECT_EQ(r.y, 12);
    EXPECT_EQ(r.w, 130);
  }
}

TEST_F(Chrome, TheHeaderIsSixtyHighOnALargeWindowAndFiftyTwoOnASmallOne) {
  frame(hoverAt(500, 300));
  EXPECT_EQ(ui::screenHeader(ctx, "Settings", nullptr), 60);
  resize(800, 560);
  frame(hoverAt(500, 300));
  EXPECT_EQ(ui::screenHeader(ctx, "Settings", nullptr), 52);
}

TEST_F(Chrome, TheHeaderReportsItsBackButton) {
  bool back = true;
  frame(releaseAt(500, 30));
  ui::screenHeader(ctx, "Settings", &back);
  EXPECT_FALSE(back);
  frame(releaseAt(20, 20));
  ui::screenHeader(ctx, "Settings", &back);
  EXPECT_TRUE(back);
  EXPECT_TRUE(ctx.clickTaken);
}

TEST_F(Chrome, TheBackButtonSaysBackInTheCurrentLanguage) {
  ui::setWidgetTracing(true);
  frame(hoverAt(0, 0));
  EXPECT_FALSE(ui::backButton(ctx));
  EXPECT_NE(ui::findTracedWidget("\u2039 Back"), nullptr);
  i18n::setLanguage("de");
  frame(releaseAt(145, 49));
  EXPECT_TRUE(ui::backButton(ctx)) << "the rect's far corner";
  EXPECT_NE(ui::findTracedWidget("\u2039 " + i18n::tr("common.back")), nullptr);
}

TEST_F(Chrome, TheHeaderTitleIsCentredOnTheWindow) {
  frame(hoverAt(0, 0));
  ui::screenHeader(ctx, "Achievements", nullptr);
  const widgettest::Bounds title = find(200, 0, 1000, 60, [](uint32_t p) { return ((p >> 8) & 255) > 0xb0; });
  ASSERT_FALSE(title.empty());
  EXPECT_NEAR(title.centreX(), 500, 3);
  EXPECT_NEAR(title.centreY(), 30, 4);
}

double advances(ui::Ctx& ctx, const std::vector<std::string>& chars, double size) {
  ui::TextStyle style;
  style.size = size;
  style.bold = true;
  double total = 0;
  for (const std::string& c : chars) {
    double w = 0, h = 0;
    ui::measureText(ctx.cr, c, style, &w, &h);
    total += w + 2;
  }
  return total;
}

TEST_F(Chrome, TheWavyTitleIsAsWideAsItsCharactersAdvances) {
  frame(hoverAt(0, 0));
  const double width = ui::wavyTitle(ctx, 500, 200, "Puzzle Time", 40);
  EXPECT_NEAR(width, advances(ctx, {"P", "u", "z", "z", "l", "e", " ", "T", "i", "m", "e"}, 40), 1e-9);
  const widgettest::Bounds drawn = ink(0, 0, 1000, 700);
  ASSERT_FALSE(drawn.empty());
  EXPECT_NEAR(drawn.centreX(), 500, 8) << "centred on x";
  EXPECT_GE(drawn.left, 500 - width / 2 - 4);
  EXPECT_LE(drawn.right, 500 + width / 2 + 4);
}

TEST_F(Chrome, TheWavyTitleCutsTextIntoWholeCharacters) {
  frame(hoverAt(0, 0));
  // Two-, three- and four-byte characters.
  const double width = ui::wavyTitle(ctx, 500, 200, "Éé✓日\U0001F600", 30);
  EXPECT_NEAR(width, advances(ctx, {"É", "é", "✓", "日", "\U0001F600"}, 30), 1e-9);
}

TEST_F(Chrome, TheWavyTitleWaves) {
  frame(hoverAt(0, 0), 0);
  ui::wavyTitle(ctx, 500, 200, "Wave", 60);
  const widgettest::Bounds first = ink(0, 0, 1000, 700);
  frame(hoverAt(0, 0), 0.7);
  ui::wavyTitle(ctx, 500, 200, "Wave", 60);
  const widgettest::Bounds later = ink(0, 0, 1000, 700);
  EXPECT_NE(first.top, later.top);
  EXPECT_LE(std::abs(later.centreY() - 200), 0.2 * 60 + 30) << "within the wave's height of the centre";
}

TEST_F(Chrome, AnEmptyWavyTitleDrawsNothing) {
  frame(hoverAt(0, 0));
  EXPECT_EQ(ui::wavyTitle(ctx, 500, 200, "", 40), 0);
  EXPECT_TRUE(ink(0, 0, 1000, 700).empty());
}

TEST_F(Chrome, TheFooterHasTwoMutedLinesAboveTheGivenBottom) {
  frame(hoverAt(0, 0));
  ui::footer(ctx, 600);
  const widgettest::Bounds all = ink(0, 0, 1000, 700);
  ASSERT_FALSE(all.empty());
  EXPECT_GE(all.top, 600 - 40);
  EXPECT_LT(all.bottom, 600);
  EXPECT_NEAR(all.centreX(), 500, 20);
  EXPECT_FALSE(ink(0, 572, 1000, 576).empty()) << "the notice line around 574";
  EXPECT_FALSE(ink(0, 588, 1000, 592).empty()) << "the version line around 590";
}

}  // namespace
