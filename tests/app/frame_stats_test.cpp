#include "app/frame_stats.h"

#include <gtest/gtest.h>

namespace {

TEST(FrameStats, ALineOnceASecondWithMeansPerFrame) {
  app::FrameStats stats(10.0);
  EXPECT_EQ(stats.record(0.002, 0.010, 10.4, 7, 1280, 800), "");
  EXPECT_EQ(stats.record(0.004, 0.020, 10.9, 7, 1280, 800), "");
  EXPECT_EQ(stats.record(0.003, 0.015, 11.0, 12, 2560, 1600),
            "[stats]   3 fps   CPU   3.0 ms   GPU  15.0 ms   12 Kopien  2560x1600\n");
}

TEST(FrameStats, CountersStartAfreshAfterEachLine) {
  app::FrameStats stats(0.0);
  stats.record(0.5, 0.5, 1.0, 0, 800, 600);
  EXPECT_EQ(stats.record(0.001, 0.0001, 1.5, 0, 800, 600), "");
  EXPECT_EQ(stats.record(0.001, 0.0001, 2.0, 0, 800, 600),
            "[stats]   2 fps   CPU   1.0 ms   GPU   0.1 ms   0 Kopien  800x600\n");
}

}  // namespace
