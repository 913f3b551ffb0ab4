// Play times and solve dates as the screens print them.
#include "ui/widgets/format.h"

#include <gtest/gtest.h>

#include <ctime>

#include "tests/support/test_support.h"

namespace {

TEST(PlayTime, MinutesAndSecondsBelowAnHour) {
  EXPECT_EQ(ui::formatTime(0), "00:00");
  EXPECT_EQ(ui::formatTime(999), "00:00") << "whole seconds, truncated";
  EXPECT_EQ(ui::formatTime(61000), "01:01");
  EXPECT_EQ(ui::formatTime((59 * 60 + 59) * 1000LL), "59:59");
  EXPECT_EQ(ui::formatTime(3599999), "59:59");
}

TEST(PlayTime, HoursFromTheFirstFullHour) {
  EXPECT_EQ(ui::formatTime(3600000), "1:00:00");
  EXPECT_EQ(ui::formatTime((10 * 3600 + 2 * 60 + 3) * 1000LL), "10:02:03");
  EXPECT_EQ(ui::formatTime(250 * 3600000LL), "250:00:00");
}

TEST(PlayTime, ANegativeTimeShowsAsZero) { EXPECT_EQ(ui::formatTime(-5000), "00:00"); }

class SolveDate : public ::testing::Test {
 protected:
  void TearDown() override { tzset(); }
};

TEST_F(SolveDate, DayMonthYearHourMinuteInLocalTime) {
  const long long instant = 1700000000123LL;  // 14 November 2023, 22:13:20 UTC
  {
    testsupport::ScopedEnv tz("TZ", std::string("UTC"));
    tzset();
    EXPECT_EQ(ui::formatDateTime(instant), "14.11.2023 22:13");
    EXPECT_EQ(ui::formatDateTime(0), "01.01.1970 00:00");
  }
  {
    testsupport::ScopedEnv tz("TZ", std::string("XYZ-3"));  // three hours east of UTC
    tzset();
    EXPECT_EQ(ui::formatDateTime(instant), "15.11.2023 01:13") << "past midnight, the next day";
  }
}

}  // namespace
