// Sealed files on disk: written whole or not at all, and set aside when they
// are not what the game wrote.
#include "store/sealed_file.h"

#include <gtest/gtest.h>

#include "tests/store/sealed_helpers.h"

namespace {

using storetest::openSealed;
using storetest::putSealed;
using testsupport::TempDir;

std::string setAsideLine(const std::string& path) {
  return "[storage] " + path + " war nicht lesbar \xE2\x80\x94 beiseitegelegt\n";
}

TEST(SealedFile, AWriteLeavesTheSealedDocumentAndNoTemporary) {
  TempDir dir;
  const std::string path = dir.file("settings.dat");
  store::writeSealed(path, js::parse("{ \"b\": [1, 2], \"a\": \"x\" }"));
  EXPECT_FALSE(platform::fs::isFile(path + ".neu"));
  const std::string bytes = testsupport::readFile(path);
  EXPECT_TRUE(platform::looksSealed(bytes));
  std::string plain;
  ASSERT_EQ(platform::saveDecrypt(bytes, &plain), platform::SealResult::Ok);
  EXPECT_EQ(plain, "{\"a\":\"x\",\"b\":[1,2]}");
  EXPECT_EQ(store::readSealed(path), plain);
}

TEST(SealedFile, ARewriteReplacesTheWholeFile) {
  TempDir dir;
  const std::string path = dir.file("saves.dat");
  store::writeSealed(path, js::parse("{\"long\":\"" + std::string(5000, 'x') + "\"}"));
  store::writeSealed(path, js::parse("[1]"));
  EXPECT_EQ(store::readSealed(path), "[1]");
  EXPECT_EQ(platform::fs::fileSize(path), 45 + 3);
}

TEST(SealedFile, AFailedWriteLeavesTheOldFile) {
  TempDir dir;
  const std::string path = dir.file("saves.dat");
  store::writeSealed(path, js::parse("{\"old\":true}"));
  // A folder (with something in it) sits where the temporary file would go.
  ASSERT_TRUE(platform::fs::ensureDir(path + ".neu/blocker"));
  store::writeSealed(path, js::parse("{\"new\":true}"));
  EXPECT_TRUE(openSealed(path)["old"].boolean);
  store::writeSealed(dir.file("missing/saves.dat"), js::parse("{}"));
  EXPECT_FALSE(platform::fs::isDir(dir.file("missing")));
}

TEST(SealedFile, MissingEmptyAndFolderPathsReadAsNothingAndStayPut) {
  TempDir dir;
  EXPECT_EQ(store::readSealed(dir.file("missing.dat")), "");
  const std::string empty = dir.write("empty.dat", "");
  testing::internal::CaptureStderr();
  EXPECT_EQ(store::readSealed(empty), "");
  EXPECT_EQ(store::readSealed(dir.path()), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(platform::fs::isFile(empty)) << "a zero-byte file is not set aside";
  EXPECT_FALSE(platform::fs::isFile(empty + ".manipuliert"));
}

TEST(SealedFile, AnEmptySealedTextOpensAsNothingWithoutBeingSetAside) {
  TempDir dir;
  const std::string path = dir.file("settings.dat");
  putSealed(path, "");
  EXPECT_EQ(platform::fs::fileSize(path), 45);
  EXPECT_EQ(store::readSealed(path), "");
  EXPECT_TRUE(platform::fs::isFile(path));
}

TEST(SealedFile, AnyFlippedByteGetsTheFileSetAsideWithOneLine) {
  TempDir dir;
  const std::string path = dir.file("settings.dat");
  store::writeSealed(path, js::parse("{\"soundOn\":false}"));
  const std::string good = testsupport::readFile(path);
  for (size_t i = 5; i < good.size(); ++i) {
    std::string bad = good;
    bad[i] = static_cast<char>(bad[i] ^ 0x20);
    platform::fs::writeFile(path, bad);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store::readSealed(path), "") << "byte " << i;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), setAsideLine(path)) << "byte " << i;
    EXPECT_FALSE(platform::fs::isFile(path)) << "byte " << i;
    // Any older file of that name is replaced by the newest one.
    EXPECT_EQ(testsupport::readFile(path + ".manipuliert"), bad) << "byte " << i;
  }
}

TEST(SealedFile, ShortAndPlainJsonFilesAreSetAsideToo) {
  TempDir dir;
  const std::string sealed = platform::saveEncrypt("{}");
  for (const std::string& content : {sealed.substr(0, 44), std::string("{\"soundOn\":false}"), std::string("x")}) {
    const std::string path = dir.write("saves.dat", content);
    testing::internal::CaptureStderr();
    EXPECT_EQ(store::readSealed(path), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), setAsideLine(path));
    EXPECT_FALSE(platform::fs::isFile(path));
    EXPECT_EQ(testsupport::readFile(path + ".manipuliert"), content);
  }
}

}  // namespace
