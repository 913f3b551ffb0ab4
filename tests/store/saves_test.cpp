// The puzzle in progress and the solve history, as the player and the file
// see them.
#include <gtest/gtest.h>

#include <set>

#include "store/saves_json.h"
#include "store/store.h"
#include "tests/store/sealed_helpers.h"

namespace {

using store::SavedPiece;
using store::SavedPuzzle;
using store::SolveEntry;
using storetest::dataFile;
using storetest::openSealed;
using storetest::putSealed;

SavedPuzzle samplePuzzle(int pieces) {
  SavedPuzzle p;
  p.imageId = "level7";
  p.rows = 10;
  p.cols = 11;
  p.boardW = 1200.5;
  p.boardH = 800;
  p.boardX = 40;
  p.boardY = -12.25;
  p.landscape = false;
  p.elapsedMs = 123456;
  p.savedAt = 1;
  p.rotationMode = store::RotationMode::Rot180;
  for (int i = 0; i < pieces; ++i) {
    p.pieces.push_back(SavedPiece{"p" + std::to_string(i), i * 1.5, -i * 0.25, i % 3 == 0, i % 4, i % 2 == 1});
  }
  return p;
}

js::Value savesFile() { return openSealed(dataFile("saves.dat")); }

TEST(Saves, AFreshStoreHasNoPuzzleAndNoSolves) {
  store::init();
  EXPECT_FALSE(store::currentPuzzle().valid);
  EXPECT_TRUE(store::solves().empty());
  EXPECT_FALSE(platform::fs::isFile(dataFile("saves.dat")));
}

TEST(Saves, TheFileHoldsThePuzzleAndSolvesUnderTheirKeys) {
  SavedPuzzle p = samplePuzzle(1);
  store::savePuzzle(p);
  store::recordSolve("level3", 5, 6, 61000);
  const js::Value doc = savesFile();
  const js::Value& cur = doc["current_puzzle"];
  const std::string stamp = std::to_string(store::currentPuzzle().savedAt);
  EXPECT_EQ(cur.dump(),
            "{\"boardH\":800,\"boardW\":1200.5,\"boardX\":40,\"boardY\":-12.25,\"cols\":11,\"elapsedMs\":123456,"
            "\"imageId\":\"level7\",\"orientation\":\"portrait\",\"pieces\":[{\"id\":\"p0\",\"inTray\":false,"
            "\"placed\":true,\"rotation\":0,\"x\":0,\"y\":0}],\"rotationMode\":\"180\",\"rows\":10,\"savedAt\":" +
                stamp + "}");
  ASSERT_EQ(doc["solves_list"].size(), 1u);
  const SolveEntry& e = store::solves()[0];
  EXPECT_EQ(doc["solves_list"][0ul].dump(), "{\"cols\":6,\"elapsedMs\":61000,\"id\":\"" + e.id +
                                                "\",\"imageId\":\"level3\",\"rows\":5,\"solvedAt\":" +
                                                std::to_string(e.solvedAt) + "}");
  EXPECT_EQ(doc.size(), 2u);
}

TEST(Saves, SavingStampsTheCurrentTimeAndMarksThePuzzleValid) {
  SavedPuzzle p = samplePuzzle(3);
  p.savedAt = 0;
  const int64_t before = store::nowMs();
  store::savePuzzle(p);
  const int64_t after = store::nowMs();
  const SavedPuzzle& cur = store::currentPuzzle();
  EXPECT_TRUE(cur.valid);
  EXPECT_GE(cur.savedAt, before);
  EXPECT_LE(cur.savedAt, after);
  EXPECT_GT(before, 1600000000000LL) << "milliseconds since 1970";
  EXPECT_EQ(savesFile()["current_puzzle"]["savedAt"].asInt64(0), cur.savedAt);
  EXPECT_EQ(cur.pieces.size(), 3u);
}

TEST(Saves, ClearingThePuzzleDropsItFromTheFile) {
  store::savePuzzle(samplePuzzle(2));
  store::recordSolve("level1", 5, 6, 1000);
  store::clearPuzzle();
  EXPECT_FALSE(store::currentPuzzle().valid);
  EXPECT_TRUE(store::currentPuzzle().pieces.empty());
  const js::Value doc = savesFile();
  EXPECT_FALSE(doc.has("current_puzzle"));
  EXPECT_EQ(doc["solves_list"].size(), 1u);
  store::clearSolves();
  EXPECT_EQ(savesFile().dump(), "{\"solves_list\":[]}");
}

TEST(Saves, ThePuzzleReadsBackFieldForField) {
  const SavedPuzzle p = samplePuzzle(110);
  store::savePuzzle(p);
  const js::Value written = savesFile();
  SavedPuzzle back;
  std::vector<SolveEntry> solves;
  store::savesFromJson(written, &back, &solves);
  EXPECT_TRUE(back.valid);
  EXPECT_EQ(store::savesToJson(back, solves).dump(), written.dump());
  ASSERT_EQ(back.pieces.size(), 110u);
  EXPECT_EQ(back.pieces[109].id, "p109");
  EXPECT_EQ(back.pieces[109].x, 109 * 1.5);
  EXPECT_TRUE(back.pieces[109].inTray);
  EXPECT_FALSE(back.landscape);
  EXPECT_EQ(back.rotationMode, store::RotationMode::Rot180);
}

TEST(Saves, TwoHundredAndOneSolvesKeepTheNewestTwoHundred) {
  for (int i = 1; i <= 201; ++i) store::recordSolve("level" + std::to_string(i), 5, 6, i);
  const std::vector<SolveEntry>& list = store::solves();
  ASSERT_EQ(list.size(), 200u);
  EXPECT_EQ(list.front().imageId, "level201");
  EXPECT_EQ(list.back().imageId, "level2");
  const js::Value file = savesFile()["solves_list"];
  ASSERT_EQ(file.size(), 200u);
  EXPECT_EQ(file[0ul]["imageId"].string, "level201");
  EXPECT_EQ(file[199ul]["imageId"].string, "level2");
  EXPECT_EQ(file[199ul]["elapsedMs"].number, 2);
}

TEST(Saves, SolveIdsAreTimeAndCountAndNeverRepeat) {
  for (int i = 0; i < 30; ++i) store::recordSolve("level1", 6, 7, 100);
  std::set<std::string> ids;
  const auto& list = store::solves();
  for (size_t i = 0; i < list.size(); ++i) {
    const SolveEntry& e = list[i];
    ids.insert(e.id);
    EXPECT_EQ(e.id, std::to_string(e.solvedAt) + "_" + std::to_string(list.size() - 1 - i));
  }
  EXPECT_EQ(ids.size(), list.size());
}

TEST(Saves, SameMillisecondSolvesGetDistinctIdsEvenWhenTheListIsFull) {
  std::vector<SolveEntry> list;
  EXPECT_EQ(store::makeSolveId(1000, list), "1000_0");
  list.insert(list.begin(), SolveEntry{"1000_0", "level1", 5, 6, 1, 1000});
  EXPECT_EQ(store::makeSolveId(1000, list), "1000_1") << "same millisecond, one entry more";
  list.assign(200, SolveEntry{"older", "level1", 5, 6, 1, 900});
  list.front().id = "1000_200";
  list[1].id = "1000_201";
  EXPECT_EQ(store::makeSolveId(1000, list), "1000_202");
  EXPECT_EQ(store::makeSolveId(1001, list), "1001_200");
}

TEST(Saves, ACurrentPuzzleWithANumericImageIdIsIgnored) {
  putSealed(dataFile("saves.dat"),
            "{\"current_puzzle\":{\"imageId\":7,\"rows\":5,\"cols\":6,\"pieces\":[]},"
            "\"solves_list\":[{\"id\":\"1_0\",\"imageId\":\"level2\",\"rows\":5,\"cols\":6}]}");
  store::init();
  EXPECT_FALSE(store::currentPuzzle().valid);
  EXPECT_EQ(store::currentPuzzle().rows, 0);
  ASSERT_EQ(store::solves().size(), 1u);
  EXPECT_EQ(store::solves()[0].imageId, "level2");
}

TEST(Saves, OnlyTheExactWordPortraitLoadsUpright) {
  SavedPuzzle p;
  std::vector<SolveEntry> solves;
  store::savesFromJson(js::parse("{\"current_puzzle\":{\"imageId\":\"level1\",\"orientation\":\"Portrait\"}}"), &p,
                       &solves);
  EXPECT_TRUE(p.valid);
  EXPECT_TRUE(p.landscape);
  p.landscape = true;
  store::savesFromJson(js::parse("{\"current_puzzle\":{\"imageId\":\"level1\",\"orientation\":\"portrait\"}}"), &p,
                       &solves);
  EXPECT_FALSE(p.landscape);
  store::savesFromJson(js::parse("{\"current_puzzle\":{\"imageId\":\"level1\",\"orientation\":false}}"), &p, &solves);
  EXPECT_TRUE(p.landscape);
}

TEST(Saves, WrongKindsInThePuzzleAndSolvesKeepTheirDefaults) {
  SavedPuzzle p;
  std::vector<SolveEntry> solves;
  store::savesFromJson(
      js::parse("{\"current_puzzle\":{\"imageId\":\"level1\",\"rows\":6.5,\"cols\":\"7\",\"boardW\":\"wide\","
                "\"boardH\":1e999,\"elapsedMs\":\"5\",\"savedAt\":1700000000000.4,\"rotationMode\":90,"
                "\"pieces\":[{\"id\":3,\"x\":\"1\",\"y\":2,\"rotation\":2.5,\"placed\":1,\"inTray\":true},7]},"
                "\"solves_list\":[{\"id\":null,\"imageId\":\"level9\",\"rows\":\"5\",\"cols\":6.4,"
                "\"elapsedMs\":\"x\",\"solvedAt\":-3}]}"),
      &p, &solves);
  EXPECT_TRUE(p.valid);
  EXPECT_EQ(p.rows, 7);
  EXPECT_EQ(p.cols, 0);
  EXPECT_EQ(p.boardW, 0);
  EXPECT_EQ(p.boardH, 0) << "an infinite board would make the file unreadable once written back";
  EXPECT_EQ(p.elapsedMs, 0);
  EXPECT_EQ(p.savedAt, 1700000000000LL);
  EXPECT_EQ(p.rotationMode, store::RotationMode::Off);
  ASSERT_EQ(p.pieces.size(), 2u) << "every element of the array is a piece";
  EXPECT_EQ(p.pieces[0].id, "");
  EXPECT_EQ(p.pieces[0].x, 0);
  EXPECT_EQ(p.pieces[0].y, 2);
  EXPECT_EQ(p.pieces[0].rotation, 3);
  EXPECT_FALSE(p.pieces[0].placed);
  EXPECT_TRUE(p.pieces[0].inTray);
  EXPECT_EQ(p.pieces[1].id, "");
  ASSERT_EQ(solves.size(), 1u);
  EXPECT_EQ(solves[0].id, "");
  EXPECT_EQ(solves[0].imageId, "level9");
  EXPECT_EQ(solves[0].rows, 0);
  EXPECT_EQ(solves[0].cols, 6);
  EXPECT_EQ(solves[0].elapsedMs, 0);
  EXPECT_EQ(solves[0].solvedAt, -3);
}

TEST(Saves, AnOverlongHistoryLoadsAsTheNewestTwoHundred) {
  js::Value doc;
  js::Value& list = doc.set("solves_list", js::Value::makeArray());
  for (int i = 0; i < 250; ++i) {
    js::Value e;
    e.set("imageId", js::Value("level" + std::to_string(i)));
    list.push(e);
  }
  SavedPuzzle p;
  std::vector<SolveEntry> solves;
  store::savesFromJson(doc, &p, &solves);
  ASSERT_EQ(solves.size(), 200u);
  EXPECT_EQ(solves.front().imageId, "level0");
  EXPECT_EQ(solves.back().imageId, "level199");
}

TEST(Saves, InitReadsTheFilesOnlyOnce) {
  putSealed(dataFile("saves.dat"), "{\"solves_list\":[{\"imageId\":\"level1\"}]}");
  putSealed(dataFile("settings.dat"), "{\"soundOn\":false}");
  store::init();
  putSealed(dataFile("saves.dat"), "{\"solves_list\":[{\"imageId\":\"level1\"},{\"imageId\":\"level2\"}]}");
  putSealed(dataFile("settings.dat"), "{\"soundOn\":true}");
  store::init();
  EXPECT_EQ(store::solves().size(), 1u);
  EXPECT_FALSE(store::settings().soundOn);
}

TEST(Saves, AChangeBeforeInitStillKeepsTheHistoryOnDisk) {
  putSealed(dataFile("saves.dat"), "{\"solves_list\":[{\"id\":\"1_0\",\"imageId\":\"level1\"}]}");
  store::recordSolve("level2", 5, 6, 10);
  ASSERT_EQ(store::solves().size(), 2u);
  EXPECT_EQ(savesFile()["solves_list"][1ul]["imageId"].string, "level1");
}

TEST(Saves, ATamperedFileIsSetAsideAndTheGameStartsEmpty) {
  putSealed(dataFile("saves.dat"), "{\"solves_list\":[{\"imageId\":\"level1\"}]}");
  std::string bytes = testsupport::readFile(dataFile("saves.dat"));
  bytes[50] = static_cast<char>(bytes[50] ^ 1);
  platform::fs::writeFile(dataFile("saves.dat"), bytes);
  testing::internal::CaptureStderr();
  store::init();
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err, "[storage] " + dataFile("saves.dat") + " war nicht lesbar \xE2\x80\x94 beiseitegelegt\n");
  EXPECT_TRUE(store::solves().empty());
  EXPECT_EQ(testsupport::readFile(dataFile("saves.dat.manipuliert")), bytes);
  store::recordSolve("level2", 5, 6, 10);
  EXPECT_EQ(savesFile()["solves_list"].size(), 1u);
  EXPECT_EQ(testsupport::readFile(dataFile("saves.dat.manipuliert")), bytes) << "the set-aside file is kept";
}

}  // namespace
