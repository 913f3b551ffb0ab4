// Lookups, conversions and the compact writer.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "js/json.h"

namespace {

using js::Value;

std::string dumpNumber(double n) { return Value(n).dump(); }

TEST(JsonValue, DefaultIsNullAndLookupsOnItChain) {
  const Value v;
  EXPECT_TRUE(v.isNull());
  EXPECT_TRUE(v["a"]["b"][3ul].isNull());
  EXPECT_EQ(&v["a"], &js::kNull);
  EXPECT_FALSE(v.has("a"));
}

TEST(JsonValue, AsIntRoundsHalfUp) {
  EXPECT_EQ(Value(2.5).asInt(7), 3);
  EXPECT_EQ(Value(-2.5).asInt(7), -2);
  EXPECT_EQ(Value(1280.6).asInt(0), 1281);
  EXPECT_EQ(Value(-0.4).asInt(7), 0);
  EXPECT_EQ(Value("5").asInt(7), 7);
  EXPECT_EQ(Value(true).asInt(7), 7);
  EXPECT_EQ(Value().asInt(-1), -1);
}

TEST(JsonValue, AsIntSaturatesAndIgnoresNan) {
  EXPECT_EQ(Value(1e300).asInt(0), INT_MAX);
  EXPECT_EQ(Value(-1e300).asInt(0), INT_MIN);
  EXPECT_EQ(Value(2147483647.0).asInt(0), INT_MAX);
  EXPECT_EQ(Value(2147483648.0).asInt(0), INT_MAX);
  EXPECT_EQ(Value(-2147483648.0).asInt(0), INT_MIN);
  EXPECT_EQ(Value(std::numeric_limits<double>::infinity()).asInt(0), INT_MAX);
  EXPECT_EQ(Value(std::nan("")).asInt(42), 42);
  EXPECT_EQ(Value(1.7e12).asInt64(0), 1700000000000LL);
  EXPECT_EQ(Value(1e19).asInt64(0), LLONG_MAX);
  EXPECT_EQ(Value(-1e19).asInt64(0), LLONG_MIN);
  EXPECT_EQ(Value(std::nan("")).asInt64(9), 9);
}

TEST(JsonValue, SizeCountsOnlyArraysAndObjects) {
  EXPECT_EQ(Value(5).size(), 0u);
  EXPECT_EQ(Value("abc").size(), 0u);
  EXPECT_EQ(js::parse("[1,2]").size(), 2u);
  EXPECT_EQ(js::parse("{\"a\":1,\"b\":2,\"c\":3}").size(), 3u);
}

TEST(JsonValue, IndexingPastTheEndOrOfTheWrongKindGivesNull) {
  const Value arr = js::parse("[1,2]");
  EXPECT_TRUE(arr[3ul].isNull());
  EXPECT_TRUE(arr[2ul].isNull());
  EXPECT_EQ(arr[1ul].number, 2);
  EXPECT_TRUE(arr["0"].isNull());
  EXPECT_FALSE(arr.has("0"));
  const Value obj = js::parse("{\"0\":1}");
  EXPECT_TRUE(obj[0ul].isNull());
  EXPECT_TRUE(obj.has("0"));
}

TEST(JsonValue, CopiesAreDeepAndMovesTakeTheContents) {
  Value a = js::parse("{\"list\":[1,2,3]}");
  Value b = a;
  b.set("list", Value(1));
  EXPECT_EQ(a["list"].size(), 3u);
  Value c;
  c = std::move(a);
  EXPECT_EQ(c["list"].size(), 3u);
}

TEST(JsonValue, BuildersTurnNullIntoContainers) {
  Value obj;
  obj.set("b", Value(1));
  obj.set("a", Value("x"));
  obj.set("b", Value(2));
  EXPECT_TRUE(obj.isObject());
  EXPECT_EQ(obj.dump(), "{\"a\":\"x\",\"b\":2}");
  Value arr;
  arr.push(Value(true));
  arr.push(Value());
  EXPECT_EQ(arr.dump(), "[true,null]");
}

TEST(JsonValue, ObjectsAreWrittenSortedByKeyBytes) {
  Value obj = Value::makeObject();
  for (const char* key : {"b", "a", "B", "\xC3\xA4", "aa", ""}) obj.set(key, Value(0));
  EXPECT_EQ(obj.dump(), "{\"\":0,\"B\":0,\"a\":0,\"aa\":0,\"b\":0,\"\xC3\xA4\":0}");
}

TEST(JsonValue, OutputIsCompact) {
  EXPECT_EQ(js::parse(" { \"a\" : [ 1 , 2 , { } , [ ] ] , \"b\" : null } ").dump(), "{\"a\":[1,2,{},[]],\"b\":null}");
  EXPECT_EQ(Value::makeArray().dump(), "[]");
  EXPECT_EQ(Value::makeObject().dump(), "{}");
  EXPECT_EQ(Value(false).dump(), "false");
}

TEST(JsonValue, WholeNumbersBelow1e15PrintAsIntegers) {
  EXPECT_EQ(dumpNumber(3.0), "3");
  EXPECT_EQ(dumpNumber(-0.0), "0");
  EXPECT_EQ(dumpNumber(999999999999999.0), "999999999999999");
  EXPECT_EQ(dumpNumber(-999999999999999.0), "-999999999999999");
  EXPECT_EQ(dumpNumber(1700000000123.0), "1700000000123");
}

TEST(JsonValue, OtherNumbersPrintWithSeventeenDigits) {
  EXPECT_EQ(dumpNumber(1e15), "1000000000000000");
  EXPECT_EQ(dumpNumber(1e17), "1e+17");
  EXPECT_EQ(dumpNumber(0.1), "0.10000000000000001");
  EXPECT_EQ(dumpNumber(0.35), "0.34999999999999998");
  EXPECT_EQ(dumpNumber(-2.5), "-2.5");
  EXPECT_EQ(dumpNumber(1e-7), "9.9999999999999995e-08");
  EXPECT_EQ(dumpNumber(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(dumpNumber(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(JsonValue, PrintedNumbersReadBackExactly) {
  for (double n : {0.1, 0.35, 1.0 / 3, -123.456e-10, 1e15, 1e300, 5e-324}) {
    EXPECT_EQ(js::parse(dumpNumber(n)).number, n) << dumpNumber(n);
  }
}

TEST(JsonValue, StringsEscapeOnlyWhatTheyMust) {
  EXPECT_EQ(Value("a\"b\\c").dump(), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(Value("\n\r\t").dump(), "\"\\n\\r\\t\"");
  EXPECT_EQ(Value("\b").dump(), "\"\\u0008\"") << "backspace is written as \\u0008, not \\b";
  EXPECT_EQ(Value("\f\x1f").dump(), "\"\\u000c\\u001f\"");
  EXPECT_EQ(Value(std::string(1, '\0')).dump(), "\"\\u0000\"");
  EXPECT_EQ(Value("a/b\x7f\xC3\xA9\xFF").dump(), "\"a/b\x7f\xC3\xA9\xFF\"");
}

TEST(JsonValue, EveryByteSurvivesAWriteAndRead) {
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  Value doc;
  doc.set(all, Value(all));
  const Value back = js::parse(doc.dump());
  EXPECT_EQ(back[all].string, all);
}

}  // namespace
