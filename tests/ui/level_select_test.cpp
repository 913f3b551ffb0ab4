// The level select played through the game's own frame function: columns,
// the chips of the level in progress, the explanation of a locked level.
#include <SDL.h>
#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "store/pictures.h"
#include "store/store.h"
#include "tests/support/frame_driver.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::FrameDriver;

// Opens the level select when asked, runs one traced frame and returns
// the widgets labelled `label`, card by card.
std::vector<ui::TracedWidget> traced(FrameDriver& driver, const std::string& label, bool open = false) {
  if (open) ui::Game::instance().resetTo(ui::GameState{ui::ScreenKind::LevelSelect, "", 0, 0, 0});
  ui::setWidgetTracing(true);
  ui::widgetTrace().clear();
  driver.idle(FrameDriver::kStep);
  std::vector<ui::TracedWidget> out;
  for (const ui::TracedWidget& w : ui::widgetTrace()) {
    if (w.label == label) out.push_back(w);
  }
  return out;
}

TEST(LevelSelect, TheWindowWidthGivesOneToFourColumns) {
  for (const auto& [width, columns] : {std::pair{759, 1}, {760, 2}, {1099, 2}, {1100, 3}, {1500, 4}}) {
    FrameDriver driver(width, 900);
    std::set<double> lefts;
    for (const ui::TracedWidget& chip : traced(driver, "5\xC3\x97" "6", true)) lefts.insert(chip.rect.x);
    EXPECT_EQ(lefts.size(), static_cast<size_t>(columns)) << width;
  }
}

// Level 1 is in progress at 5 x 6: that chip resumes the saved puzzle, any
// other discards it without a question.
TEST(LevelSelect, AnotherDifficultyOfTheLevelInProgressDiscardsTheSave) {
  FrameDriver driver(1280, 800);
  for (const auto& [label, cols, kept] : {std::tuple{"5\xC3\x97" "6", 6, true}, {"6\xC3\x97" "7", 7, false}}) {
    store::SavedPuzzle saved;
    saved.imageId = "level1", saved.rows = 5, saved.cols = 6;
    store::savePuzzle(saved);
    const ui::Rect chip = traced(driver, label, true).at(0).rect;
    driver.click(chip.x + 5, chip.y + 5);
    const ui::GameState& top = driver.game().top();
    EXPECT_TRUE(top.screen == ui::ScreenKind::Playing && top.levelId == "level1" && top.rows == cols - 1 &&
                top.cols == cols)
        << label;
    EXPECT_EQ(store::currentPuzzle().valid, kept) << label;
  }
}

// A chip of locked level 2 names level 1 as the way to open it; while the
// explanation shows, Escape closes it rather than leaving the screen.
TEST(LevelSelect, ALockedLevelExplainsWhichLevelOpensIt) {
  FrameDriver driver(1280, 800);
  const ui::Rect chip = traced(driver, "7\xC3\x97" "8", true).at(1).rect;
  driver.click(chip.x + 5, chip.y + 5);
  const std::string message = i18n::tr("levels.lockedMessage", {{"prev", "1"}, {"level", "2"}});
  EXPECT_EQ(traced(driver, message).size(), 1u);
  driver.key(SDLK_ESCAPE);
  EXPECT_TRUE(traced(driver, message).empty());
  driver.key(SDLK_ESCAPE);
  EXPECT_EQ(driver.game().top().screen, ui::ScreenKind::Menu);
}

// Pictures dropped on the level select join "Your pictures" (a file that is
// none says so); one is removed from its card after a question, its saved
// puzzle with it. A save of a picture gone by other ways leaves the menu
// without Continue, and opening it shows an empty table rather than a crash.
TEST(LevelSelect, DroppedPicturesJoinYourPicturesAndLeaveFromTheirCards) {
  FrameDriver driver(1280, 800);
  testsupport::TempDir t;
  traced(driver, "", true);
  ui::Input drop;
  drop.dropped = {t.write("a.jpg", testsupport::quarteredJpeg(800, 600)),
                  t.write("b.jpg", testsupport::quarteredJpeg(600, 800)), t.write("c.txt", "text")};
  driver.frame(drop);
  EXPECT_EQ(traced(driver, i18n::tr("pictures.notPicture", {{"name", "c.txt"}})).size(), 1u);
  driver.key(SDLK_RETURN);
  const std::vector<ui::TracedWidget> remove = traced(driver, i18n::tr("pictures.remove"));
  ASSERT_EQ(remove.size(), 2u) << "both cards, scrolled to";
  store::SavedPuzzle saved;
  saved.imageId = core::pictureLevels().at(0).id, saved.rows = 5, saved.cols = 6;
  store::savePuzzle(saved);
  driver.click(remove[0].rect.x + 5, remove[0].rect.y + 5);
  driver.key(SDLK_RETURN);
  EXPECT_FALSE(store::currentPuzzle().valid);
  ASSERT_EQ(core::pictureLevels().size(), 1u);
  EXPECT_EQ(core::pictureLevels()[0].source, "b");

  saved.imageId = core::pictureLevels()[0].id;
  store::savePuzzle(saved);
  store::removePicture(saved.imageId);
  driver.game().resetTo(ui::GameState{ui::ScreenKind::Menu, "", 0, 0, 0});
  EXPECT_TRUE(traced(driver, i18n::tr("menu.continue")).empty());
  driver.game().resetTo(ui::GameState{ui::ScreenKind::Playing, saved.imageId, 5, 6, 0});
  driver.idle(0.2);
}

}  // namespace
