// Quitting in the middle of a game keeps everything up to the last frame.
#include <gtest/gtest.h>

#include "store/store.h"
#include "tests/support/frame_driver.h"

TEST(QuitWhilePlaying, SavesThePlayTimeNotYetSaved) {
  testsupport::FrameDriver driver(1280, 800);
  ui::GameState st;
  st.screen = ui::ScreenKind::Playing;
  st.levelId = "level1";
  st.rows = 5;
  st.cols = 6;
  driver.game().resetTo(st);
  driver.idle(2.0);  // the fresh deal is saved at once, its clock only every few seconds
  ASSERT_LT(store::currentPuzzle().elapsedMs, 1000);
  driver.game().saveNow();
  EXPECT_NEAR(store::currentPuzzle().elapsedMs, 2000, 50);
}
