// Whole JSON files on disk.
#include <gtest/gtest.h>

#include "js/json.h"
#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

using js::Value;
using testsupport::TempDir;

TEST(JsonFile, ParseFileFillsTheValueOnlyOnSuccess) {
  TempDir dir;
  Value v = js::parse("[\"kept\"]");
  EXPECT_FALSE(js::parseFile(dir.file("missing.json"), &v));
  EXPECT_FALSE(js::parseFile(dir.write("bad.json", "{\"a\":"), &v));
  EXPECT_FALSE(js::parseFile(dir.write("empty.json", ""), &v));
  EXPECT_FALSE(js::parseFile(dir.path(), &v)) << "a folder is not a file";
  EXPECT_EQ(v[0ul].string, "kept");
  ASSERT_TRUE(js::parseFile(dir.write("good.json", "{\"a\":[1,2]} and more"), &v));
  EXPECT_EQ(v["a"].size(), 2u);
  EXPECT_TRUE(js::parseFile(dir.write("null.json", "null"), &v));
  EXPECT_TRUE(v.isNull());
}

TEST(JsonFile, WriteFileAtomicReplacesTheTargetAndLeavesNoTemporary) {
  TempDir dir;
  const std::string path = dir.write("doc.json", "old contents that are longer");
  ASSERT_TRUE(js::writeFileAtomic(path, js::parse("{ \"b\": 1, \"a\": [ true ] }")));
  EXPECT_EQ(testsupport::readFile(path), "{\"a\":[true],\"b\":1}");
  EXPECT_FALSE(platform::fs::isFile(path + ".tmp"));
  Value back;
  ASSERT_TRUE(js::parseFile(path, &back));
  EXPECT_TRUE(back["a"][0ul].boolean);
}

TEST(JsonFile, AFailedWriteLeavesTheTargetAlone) {
  TempDir dir;
  const std::string path = dir.write("doc.json", "[1]");
  // The temporary name is taken by a folder, so it cannot be opened.
  ASSERT_TRUE(platform::fs::ensureDir(path + ".tmp"));
  EXPECT_FALSE(js::writeFileAtomic(path, Value(2)));
  EXPECT_EQ(testsupport::readFile(path), "[1]");
  EXPECT_FALSE(js::writeFileAtomic(dir.file("no/such/folder/doc.json"), Value(2)));
}

}  // namespace
