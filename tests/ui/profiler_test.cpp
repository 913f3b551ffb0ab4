#include "ui/profiler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

// The profiler reads its switch once per process, so every case runs in a
// forked child of a process that never touched it, and reports through its
// standard error.
namespace {

void sleepMs(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

[[noreturn]] void reportAndExit(const std::string& a, const std::string& b) {
  std::fprintf(stderr, "[%s][%s]", a.c_str(), b.c_str());
  std::fflush(stderr);
  std::_Exit(0);
}

double nowMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Two sections of 2 and 4 ms. A sleep never returns early, and each section
// lies inside the interval measured around it here, so the reported mean
// lies between 3.0 and the mean measured outside (plus rounding): exact
// however loaded the machine is.
void timedSections(bool on) {
  if (on) {
    ::setenv("TESSELLATRIX_STATS", "", 1);
  } else {
    ::unsetenv("TESSELLATRIX_STATS");
  }
  double outer = 0;
  for (int ms : {2, 4}) {
    const double start = nowMs();
    ui::profBegin("draw");
    sleepMs(ms);
    ui::profEnd("draw");
    outer += nowMs() - start;
  }
  const std::string first = ui::profReport();
  double mean = 0;
  if (std::sscanf(first.c_str(), " draw %lf", &mean) == 1 && (mean < 3.0 || mean > outer / 2 + 0.05)) {
    std::fprintf(stderr, "mean %.2f outside [3.0, %.2f]", mean, outer / 2 + 0.05);
  }
  reportAndExit(first, ui::profReport());
}

TEST(Profiler, MeanMillisecondsPerCallThenReset) {
  EXPECT_EXIT(timedSections(true), ::testing::ExitedWithCode(0), "^\\[ draw [0-9]+\\.[0-9]\\]\\[\\]$");
}

TEST(Profiler, SilentWithoutTheStatsVariable) {
  EXPECT_EXIT(timedSections(false), ::testing::ExitedWithCode(0), "^\\[\\]\\[\\]$");
}

TEST(Profiler, SectionsAreReportedInNameOrderAndOnlyWithCalls) {
  auto body = [] {
    ::setenv("TESSELLATRIX_STATS", "1", 1);
    ui::profBegin("zeta");
    ui::profEnd("zeta");
    ui::profBegin("alpha");
    ui::profEnd("alpha");
    ui::profBegin("idle");  // begun, never ended: no calls
    const std::string first = ui::profReport();
    ui::profBegin("zeta");
    ui::profEnd("zeta");
    reportAndExit(first, ui::profReport());
  };
  EXPECT_EXIT(body(), ::testing::ExitedWithCode(0), "^\\[ alpha [0-9]+\\.[0-9] zeta [0-9]+\\.[0-9]\\]\\[ zeta [0-9]+\\.[0-9]\\]$");
}

TEST(Profiler, EndWithoutBeginCountsFromTheClockOrigin) {
  auto body = [] {
    ::setenv("TESSELLATRIX_STATS", "1", 1);
    ui::profEnd("orphan");
    reportAndExit(ui::profReport(), "");
  };
  // The steady clock's origin is the machine's start, seconds or more ago:
  // a mean of thousands of milliseconds shows it did not start at the call.
  EXPECT_EXIT(body(), ::testing::ExitedWithCode(0), "^\\[ orphan [0-9]{4,}\\.[0-9]\\]\\[\\]$");
}

}  // namespace
