// The player's own pictures as the data folder keeps them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>

#include "core/catalog.h"
#include "platform/fs.h"
#include "platform/paths.h"
#include "store/pictures.h"
#include "store/store.h"
#include "tests/support/test_support.h"

namespace {

using store::ImportStatus;
using testsupport::TempDir;

// The stored pictures, and everything else in their folder.
std::string storedFiles() {
  std::string all;
  for (const std::string& name : platform::fs::listDir(core::pictureLevelDir())) all += name + " ";
  return all;
}

// A saved puzzle names its picture by this id: it must never change for the
// same bytes, wherever they come from.
TEST(Pictures, TheSamePhotoIsOneLevelUnderItsContentId) {
  EXPECT_EQ(store::pictureId("abc"), "photo-d8bb14d833d59559");
  TempDir t;
  const std::string photo = testsupport::quarteredJpeg(800, 600);
  const store::ImportResult first = store::importPicture(t.write("a.jpg", photo));
  const store::ImportResult again = store::importPicture(t.write("copy of a.jpeg", photo));
  EXPECT_EQ(first.status, ImportStatus::Added);
  EXPECT_EQ(again.status, ImportStatus::Known);
  EXPECT_EQ(again.id, first.id);
  EXPECT_EQ(first.id, store::pictureId(photo));
  ASSERT_EQ(core::pictureLevels().size(), 1u);
  const core::Level* level = core::levelById(first.id);
  ASSERT_NE(level, nullptr);
  EXPECT_EQ(level->source + " " + std::to_string(level->width) + "x" + std::to_string(level->height), "a 800x600");
  EXPECT_EQ(storedFiles(), "index.json " + first.id + ".jpg " + first.id + "_blur.jpg ");
  EXPECT_EQ(store::importPicture(t.write("b.jpg", testsupport::quarteredJpeg(600, 800))).status, ImportStatus::Added);
  EXPECT_EQ(core::pictureLevels().size(), 2u);
}

// Whatever goes wrong, nothing is added and the saved game stays as it was.
TEST(Pictures, BadInputAddsNothingAndTouchesNoSave) {
  TempDir t;
  store::SavedPuzzle saved;
  saved.imageId = "level3";
  store::savePuzzle(saved);
  const std::string saves = testsupport::readFile(paths::dataDir() + "/saves.dat");
  const std::string photo = testsupport::quarteredJpeg(800, 600);
  const std::string dir = core::pictureLevelDir(), tmp = dir + "/" + store::pictureId(photo) + ".jpg.tmp";
  // A PNG header naming 12000 x 9000 pixels, and none of them.
  const std::string huge("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\x2E\xE0\0\0\x23\x28\x08\x02\0\0\0\0\0\0\0", 33);
  struct Case { const char* what; std::string bytes; ImportStatus status; std::function<void()> setUp; };
  const Case kCases[] = {
      {"no picture", "just some text", ImportStatus::NotPicture, [] {}},
      {"cut short", photo.substr(0, photo.size() / 2), ImportStatus::Damaged, [] {}},
      {"399 high", testsupport::quarteredJpeg(800, 399), ImportStatus::TooSmall, [] {}},
      {"108 megapixels", huge, ImportStatus::TooLarge, [] {}},
      {"missing", "", ImportStatus::Unreadable, [&] { platform::fs::remove(t.file("missing")); }},
      {"folder is a file", photo, ImportStatus::NotStored, [&] { platform::fs::writeFile(dir, ""); }},
      {"disk full", photo, ImportStatus::NotStored,
       [&] { platform::fs::remove(dir), platform::fs::ensureDir(dir), symlink("/dev/full", tmp.c_str()); }},
  };
  for (const Case& c : kCases) {
    const std::string path = t.write("missing", c.bytes);
    c.setUp();
    EXPECT_EQ(store::importPicture(path).status, c.status) << c.what;
    EXPECT_TRUE(core::pictureLevels().empty()) << c.what;
    EXPECT_EQ(storedFiles().find(".jpg"), std::string::npos) << c.what << ": " << storedFiles();
  }
  EXPECT_EQ(testsupport::readFile(paths::dataDir() + "/saves.dat"), saves);
}

// A picture of the folder is imported once; removed, it stays away until
// the file changes.
TEST(Pictures, TheFolderIsReadOnceAndARemovedPictureStaysAway) {
  const std::string folder = store::picturesFolder();
  platform::fs::writeFile(folder + "/one.jpg", testsupport::quarteredJpeg(800, 600));
  platform::fs::writeFile(folder + "/notes.txt", "a note");
  const auto scan = [] {
    std::string out;
    for (const auto& [name, result] : store::importPicturesFolder()) {
      out += name + ":" + std::to_string(int(result.status)) + " ";
    }
    return out;
  };
  EXPECT_EQ(scan(), "notes.txt:3 one.jpg:0 ");
  EXPECT_EQ(scan(), "");
  ASSERT_TRUE(store::removePicture(core::pictureLevels().at(0).id));
  EXPECT_EQ(scan(), "");
  EXPECT_TRUE(core::pictureLevels().empty());
  platform::fs::writeFile(folder + "/one.jpg", testsupport::quarteredJpeg(900, 600));
  EXPECT_EQ(scan(), "one.jpg:0 ");
}

}  // namespace
