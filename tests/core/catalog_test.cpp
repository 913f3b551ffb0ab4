#include "core/catalog.h"

#include <gtest/gtest.h>

#include <set>

#include "platform/paths.h"

namespace {

TEST(Difficulties, SixRowsEachWithOneMoreColumnThanRows) {
  const auto& d = core::difficulties();
  ASSERT_EQ(d.size(), 6u);
  const int pieces[] = {30, 42, 56, 72, 90, 110};
  const char* ids[] = {"easy", "medium", "hard", "expert", "master", "grandmaster"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(d[i].index, i);
    EXPECT_EQ(d[i].cols, d[i].rows + 1);
    EXPECT_EQ(d[i].rows * d[i].cols, pieces[i]);
    EXPECT_STREQ(d[i].id, ids[i]);
    EXPECT_EQ(std::string(d[i].nameKey), std::string("difficulty.") + ids[i]);
  }
}

TEST(Levels, FortyLevelsNumberedByTheirIds) {
  const auto& levels = core::levels();
  ASSERT_EQ(levels.size(), 40u);
  std::set<std::string> ids;
  for (size_t i = 0; i < levels.size(); ++i) {
    EXPECT_EQ(levels[i].id, "level" + std::to_string(i + 1));
    EXPECT_EQ(levels[i].number, static_cast<int>(i + 1));
    EXPECT_GT(levels[i].width, 0);
    EXPECT_GT(levels[i].height, 0);
    ids.insert(levels[i].id);
  }
  EXPECT_EQ(ids.size(), 40u);
  EXPECT_EQ(core::levelById("level10")->number, 10) << "not 1";
}

TEST(Levels, OnlyLevel25IsPortrait) {
  for (const core::Level& l : core::levels()) {
    EXPECT_EQ(l.height > l.width, l.id == "level25") << l.id;
  }
  const core::Level* flower = core::levelById("level25");
  ASSERT_NE(flower, nullptr);
  EXPECT_EQ(flower->width, 2000);
  EXPECT_EQ(flower->height, 2500);
  EXPECT_EQ(flower->source, "Sonnenblume");
}

TEST(Levels, LookupIsExact) {
  const core::Level* last = core::levelById("level40");
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(last->source, "MasterThumb (4)");
  EXPECT_EQ(last, &core::levels().back());
  EXPECT_EQ(core::levelById("Level40"), nullptr);
  EXPECT_EQ(core::levelById("level41"), nullptr);
  EXPECT_EQ(core::levelById(""), nullptr);
  EXPECT_EQ(core::levelById("level4 "), nullptr);
}

TEST(Levels, ThePicturePathsAreBuiltFromTheIdNotTheSource) {
  const core::Level* l = core::levelById("level7");
  ASSERT_NE(l, nullptr);
  EXPECT_EQ(core::levelImagePath(*l), paths::assetDir() + "/assets/levels/level7.jpg");
  EXPECT_EQ(core::levelBlurPath(*l), paths::assetDir() + "/assets/levels/level7_blur.jpg");
  EXPECT_EQ(core::levelImagePath(*l).find("DSC00755"), std::string::npos);
}

TEST(Levels, TheListIsBuiltOnce) {
  EXPECT_EQ(&core::levels(), &core::levels());
  EXPECT_EQ(&core::difficulties(), &core::difficulties());
}

}  // namespace
