// The solved screen's viewer: zoom about the pointer within its bounds, the
// double-click toggle, the pan's clamps; the screen itself on a frame; and the
// gallery that leads to it.
#include <gtest/gtest.h>

#include "store/store.h"
#include "tests/support/frame_driver.h"
#include "ui/screens/photo_viewer.h"
#include "ui/widgets/theme.h"
#include "ui/widgets/trace.h"

namespace {

using ui::PhotoViewer;

TEST(PhotoViewer, TheWheelZoomsAboutThePointerWithinOneToFive) {
  struct Case { const char* what; std::vector<double> notches; double zoom; };
  const Case kCases[] = {{"down at 1", {-1}, 1},
                         {"up twice", {1, 1}, 1.15 * 1.15},
                         {"far up", {30}, 5},
                         {"far up then one down", {30, -1}, 5 / 1.15},
                         {"up, then far down", {2, -40}, 1}};
  for (const Case& c : kCases) {
    PhotoViewer v;
    for (double n : c.notches) {
      // The picture point under the pointer (100, -40) stays under it.
      const double before = (100 - v.panX) / v.zoom;
      v.wheel(n, 100, -40);
      EXPECT_NEAR((100 - v.panX) / v.zoom, before, 1e-9) << c.what;
    }
    EXPECT_NEAR(v.zoom, c.zoom, 1e-9) << c.what;
  }
}

TEST(PhotoViewer, TheDoubleClickTogglesAndThePanIsHeldNearThePicture) {
  PhotoViewer v;
  v.toggleZoom();
  EXPECT_EQ(v.zoom, 2);
  v.drag(5000, -5000, 1.0 / 60);
  v.clampPan(400, 300, 500, 400);  // drawn 800 × 600: limits 150 + 125 and 100 + 100
  EXPECT_EQ(v.panX, 275);
  EXPECT_EQ(v.panY, -200);
  v.coast(1.0 / 60);
  EXPECT_GT(v.panX, 275) << "a fling glides on after release";
  v.toggleZoom();
  v.drag(80, 80, 1.0 / 60);
  v.clampPan(400, 300, 500, 400);
  EXPECT_EQ(v.zoom, 1);
  EXPECT_EQ(v.panX, 0) << "fitted, the picture does not move";
  v.wheel(40, 0, 0);
  v.panX = -1e6;
  v.clampPan(400, 300, 500, 400);
  EXPECT_EQ(v.panX, -(2000 - 500) / 2.0 - 125);
}

TEST(SolvedScreen, ShowsThePictureAndContinueGoesBack) {
  testsupport::FrameDriver driver(1000, 700);
  ui::GameState menu, solved;
  menu.screen = ui::ScreenKind::Menu;
  solved.screen = ui::ScreenKind::Solved;
  solved.levelId = "level3";
  solved.rows = 5;
  solved.cols = 6;
  driver.game().resetTo(menu);
  driver.game().push(solved);
  driver.idle(0.1);
  const uint32_t bg = 0xff000000 | ui::kColorBackground;
  EXPECT_NE(driver.pixel(500, 320), bg) << "the photograph fills the viewer";
  driver.click(500, 700 - 84 + 16 + 26);
  driver.idle(0.1);
  EXPECT_EQ(driver.game().top().screen, ui::ScreenKind::Menu);
}

// Solves of levels the game no longer has stay hidden; a card opens its solve.
TEST(Gallery, ShowsKnownSolvesOnlyAndOpensTheOneClicked) {
  testsupport::FrameDriver driver(1000, 700);
  ui::setWidgetTracing(true);
  store::solves() = {{"1_0", "level3", 5, 6, 61000, 1}, {"2_1", "level99", 6, 7, 1, 2},
                     {"3_2", "level5", 10, 11, 3723000, 3}};
  ui::GameState gallery;
  gallery.screen = ui::ScreenKind::Gallery;
  driver.game().resetTo(gallery);
  ui::widgetTrace().clear();
  driver.idle(0.05);
  EXPECT_EQ(ui::findTracedWidget("LVL 99"), nullptr);
  const ui::TracedWidget* card = ui::findTracedWidget("LVL 5");
  ASSERT_NE(card, nullptr);
  driver.click(card->rect.x + 40, card->rect.y + 40);
  driver.idle(0.05);
  const ui::GameState& top = driver.game().top();
  EXPECT_EQ(top.screen, ui::ScreenKind::Solved);
  EXPECT_EQ(top.levelId + " " + std::to_string(top.rows) + "x" + std::to_string(top.cols), "level5 10x11");
  EXPECT_EQ(top.elapsedMs, 3723000);

  // With nothing to show, the window holds the header and one line of text.
  store::solves() = {{"2_1", "level99", 6, 7, 1, 2}};
  driver.game().resetTo(gallery);
  ui::widgetTrace().clear();
  driver.idle(0.05);
  EXPECT_EQ(ui::findTracedWidget("LVL 3"), nullptr);
  int ink = 0;
  for (int x = 0; x < 1000; ++x) ink += driver.pixel(x, 350) != (0xff000000 | ui::kColorBackground);
  EXPECT_GT(ink, 20) << "the empty text across the middle";
  ui::setWidgetTracing(false);
}

}  // namespace
