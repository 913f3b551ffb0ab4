// Numbers in the saves and settings files are clamped on reading, whatever
// the file holds: the game adds to them and must not overflow.
#include <gtest/gtest.h>

#include <string>

#include "js/json.h"
#include "store/saves_json.h"
#include "store/settings_json.h"

namespace {

using namespace store;

template <typename T>
void expectWithin(T v, T lo, T hi, const std::string& what) {
  EXPECT_TRUE(v >= lo && v <= hi) << what << " = " << v;
}

TEST(ReadClamps, EveryNumberOfTheFilesLandsInItsRange) {
  for (const std::string n : {"1e400", "-1e400", "9.3e18", "-9.3e18", "1e300", "4e9", "-4e9"}) {
    const std::string piece = R"({"id":"0_0","x":)" + n + R"(,"y":)" + n + R"(,"rotation":)" + n + "}";
    const js::Value saves = js::parse(R"({"current_puzzle":{"imageId":"level1","rows":)" + n + R"(,"cols":)" + n +
                                      R"(,"boardW":)" + n + R"(,"boardH":)" + n + R"(,"boardX":)" + n +
                                      R"(,"boardY":)" + n + R"(,"elapsedMs":)" + n + R"(,"savedAt":)" + n +
                                      R"(,"pieces":[)" + piece + R"(]},"solves_list":[{"rows":)" + n +
                                      R"(,"cols":)" + n + R"(,"elapsedMs":)" + n + R"(,"solvedAt":)" + n + "}]}");
    SavedPuzzle p;
    std::vector<SolveEntry> solves;
    savesFromJson(saves, &p, &solves);
    ASSERT_TRUE(p.valid && p.pieces.size() == 1 && solves.size() == 1) << n;
    const std::string at = " for " + n;
    expectWithin(p.elapsedMs, int64_t{0}, kMaxPlayMs, "elapsedMs" + at);
    expectWithin(p.savedAt, -kMaxStampMs, kMaxStampMs, "savedAt" + at);
    expectWithin(solves[0].elapsedMs, int64_t{0}, kMaxPlayMs, "solve elapsedMs" + at);
    expectWithin(solves[0].solvedAt, -kMaxStampMs, kMaxStampMs, "solvedAt" + at);
    for (int side : {p.rows, p.cols, solves[0].rows, solves[0].cols}) expectWithin(side, 0, kMaxGridSide, "grid" + at);
    for (double c : {p.boardW, p.boardH, p.boardX, p.boardY, p.pieces[0].x, p.pieces[0].y}) {
      expectWithin(c, -kMaxCoordinate, kMaxCoordinate, "coordinate" + at);
    }
    expectWithin(p.pieces[0].rotation, -360, 360, "rotation" + at);

    Settings s;
    settingsFromJson(js::parse(R"({"windowW":)" + n + R"(,"windowH":)" + n + R"(,"windowX":)" + n +
                               R"(,"windowY":)" + n + "}"),
                     &s);
    for (int v : {s.windowW, s.windowH, s.windowX, s.windowY}) {
      expectWithin(v, -static_cast<int>(kMaxCoordinate), static_cast<int>(kMaxCoordinate), "window" + at);
    }
  }
}

}  // namespace
