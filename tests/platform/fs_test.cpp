#include "platform/fs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/test_support.h"

namespace {

using testsupport::TempDir;

TEST(FileHelpers, FileSizeIsMinusOneForDirectoriesAndMissingFiles) {
  TempDir dir;
  EXPECT_EQ(platform::fs::fileSize(dir.write("five", "12345")), 5);
  EXPECT_EQ(platform::fs::fileSize(dir.write("empty", "")), 0);
  EXPECT_EQ(platform::fs::fileSize(dir.path()), -1);
  EXPECT_EQ(platform::fs::fileSize(dir.file("missing")), -1);
  EXPECT_EQ(platform::fs::fileSize(""), -1);
}

TEST(FileHelpers, KindsFollowSymbolicLinks) {
  TempDir dir;
  const std::string file = dir.write("f", "x");
  ASSERT_EQ(::symlink(file.c_str(), dir.file("link-to-file").c_str()), 0);
  ASSERT_EQ(::symlink(dir.path().c_str(), dir.file("link-to-dir").c_str()), 0);
  EXPECT_TRUE(platform::fs::isFile(file));
  EXPECT_TRUE(platform::fs::isFile(dir.file("link-to-file")));
  EXPECT_FALSE(platform::fs::isDir(dir.file("link-to-file")));
  EXPECT_TRUE(platform::fs::isDir(dir.file("link-to-dir")));
  EXPECT_FALSE(platform::fs::isFile(dir.file("missing")));
  EXPECT_FALSE(platform::fs::isDir(dir.file("missing")));
}

TEST(FileHelpers, RemoveIsTrueOnlyWhenSomethingWasRemoved) {
  TempDir dir;
  const std::string file = dir.write("f", "x");
  EXPECT_TRUE(platform::fs::remove(file));
  EXPECT_FALSE(platform::fs::isFile(file));
  EXPECT_FALSE(platform::fs::remove(file));
}

TEST(FileHelpers, EnsureDirCreatesEveryMissingParent) {
  TempDir dir;
  const std::string deep = dir.file("a/b/c/d");
  EXPECT_TRUE(platform::fs::ensureDir(deep));
  EXPECT_TRUE(platform::fs::isDir(deep));
  EXPECT_TRUE(platform::fs::ensureDir(deep)) << "an existing folder is fine";
}

TEST(FileHelpers, EnsureDirRefusesFilesAndEmptyPaths) {
  TempDir dir;
  const std::string file = dir.write("plain", "x");
  EXPECT_FALSE(platform::fs::ensureDir(file));
  EXPECT_FALSE(platform::fs::ensureDir(file + "/below"));
  EXPECT_FALSE(platform::fs::ensureDir(""));
}

TEST(FileHelpers, ListDirSortsByBytesAndSkipsDotEntries) {
  TempDir dir;
  dir.write("b", "");
  dir.write("B", "");
  dir.write("a10", "");
  dir.write("a9", "");
  dir.write("\xC3\xA4pfel", "");  // a UTF-8 byte above every ASCII letter
  ASSERT_TRUE(platform::fs::ensureDir(dir.file("zdir")));
  const std::vector<std::string> expected = {"B", "a10", "a9", "b", "zdir", "\xC3\xA4pfel"};
  EXPECT_EQ(platform::fs::listDir(dir.path()), expected);
}

TEST(FileHelpers, ListDirOfMissingOrPlainFileIsEmpty) {
  TempDir dir;
  EXPECT_TRUE(platform::fs::listDir(dir.file("missing")).empty());
  EXPECT_TRUE(platform::fs::listDir(dir.write("f", "x")).empty());
}

TEST(FileHelpers, ReplaceAtomicMovesOverAnExistingTarget) {
  TempDir dir;
  const std::string from = dir.write("new", "fresh");
  const std::string to = dir.write("target", "old");
  EXPECT_TRUE(platform::fs::replaceAtomic(from, to));
  EXPECT_EQ(testsupport::readFile(to), "fresh");
  EXPECT_FALSE(platform::fs::isFile(from));
  EXPECT_FALSE(platform::fs::replaceAtomic(dir.file("missing"), to));
  EXPECT_EQ(testsupport::readFile(to), "fresh");
}

TEST(FileHelpers, SyncFileNeedsAnOpenableFile) {
  TempDir dir;
  EXPECT_TRUE(platform::fs::syncFile(dir.write("f", "data")));
  EXPECT_TRUE(platform::fs::syncFile(dir.path())) << "folders are synced after a rename";
  EXPECT_FALSE(platform::fs::syncFile(dir.file("missing")));
}

TEST(FileHelpers, ReadFileTakesEveryByteAndLeavesTheOutputAloneOnFailure) {
  TempDir dir;
  std::string big(100000, '\0');
  for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 7);
  const std::string path = dir.write("big", big);
  std::string out = "kept";
  EXPECT_FALSE(platform::fs::readFile(dir.file("missing"), &out));
  EXPECT_FALSE(platform::fs::readFile(dir.path(), &out));
  EXPECT_FALSE(platform::fs::readFile("", &out));
  EXPECT_EQ(out, "kept");
  ASSERT_TRUE(platform::fs::readFile(path, &out));
  EXPECT_EQ(out, big);
  ASSERT_TRUE(platform::fs::readFile(dir.write("empty", ""), &out));
  EXPECT_EQ(out, "");
}

TEST(FileHelpers, WriteFileTruncatesAndReportsFailure) {
  TempDir dir;
  const std::string path = dir.write("f", "a longer old text");
  EXPECT_TRUE(platform::fs::writeFile(path, std::string("ne\0w", 4)));
  EXPECT_EQ(testsupport::readFile(path), std::string("ne\0w", 4));
  EXPECT_FALSE(platform::fs::writeFile(dir.file("missing/f"), "x"));
  EXPECT_FALSE(platform::fs::writeFile(dir.path(), "x"));
  // The kernel's full device fails every write that reaches it.
  EXPECT_FALSE(platform::fs::writeFile("/dev/full", std::string(100000, 'x')));
  EXPECT_FALSE(platform::fs::writeFile("/dev/full", "x")) << "a failure showing only when closing counts";
}

}  // namespace
