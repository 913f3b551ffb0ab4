// Numbers in the saves and settings files are clamped on reading, whatever
// the file holds: the game adds to them and must not overflow.
#include <gtest/gtest.h>

#include <regex>

#include "js/json.h"
#include "store/saves_json.h"
#include "store/settings_json.h"

namespace {

using namespace store;

// The document with every N replaced by the number.
js::Value withNumber(const char* doc, const std::string& n) {
  return js::parse(std::regex_replace(doc, std::regex("N"), n));
}

#define EXPECT_WITHIN(v, lo, hi) EXPECT_TRUE((v) >= (lo) && (v) <= (hi)) << #v << " = " << (v) << " from " << n

TEST(ReadClamps, EveryNumberOfTheFilesLandsInItsRange) {
  for (const std::string n : {"1e400", "-1e400", "9.3e18", "-9.3e18", "1e300", "4e9", "-4e9"}) {
    SavedPuzzle p;
    std::vector<SolveEntry> solves;
    savesFromJson(withNumber(R"({"current_puzzle":{"imageId":"l","rows":N,"cols":N,"boardW":N,"boardH":N,
        "boardX":N,"boardY":N,"elapsedMs":N,"savedAt":N,"pieces":[{"x":N,"y":N,"rotation":N}]},
        "solves_list":[{"rows":N,"cols":N,"elapsedMs":N,"solvedAt":N}]})", n), &p, &solves);
    ASSERT_TRUE(p.pieces.size() == 1 && solves.size() == 1) << n;
    const SolveEntry& e = solves[0];
    EXPECT_WITHIN(p.elapsedMs, 0, kMaxPlayMs);
    EXPECT_WITHIN(e.elapsedMs, 0, kMaxPlayMs);
    for (int64_t stamp : {p.savedAt, e.solvedAt}) EXPECT_WITHIN(stamp, -kMaxStampMs, kMaxStampMs);
    for (int side : {p.rows, p.cols, e.rows, e.cols}) EXPECT_WITHIN(side, 0, kMaxGridSide);
    for (double c : {p.boardW, p.boardH, p.boardX, p.boardY, p.pieces[0].x, p.pieces[0].y}) {
      EXPECT_WITHIN(c, -kMaxCoordinate, kMaxCoordinate);
    }
    EXPECT_WITHIN(p.pieces[0].rotation, -360, 360);
    Settings s;
    settingsFromJson(withNumber(R"({"windowW":N,"windowH":N,"windowX":N,"windowY":N})", n), &s);
    for (int v : {s.windowW, s.windowH, s.windowX, s.windowY}) EXPECT_WITHIN(v, -1e6, 1e6);
  }
}

}  // namespace
