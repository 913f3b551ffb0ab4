// What the reader accepts and refuses, and what it makes of it.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "js/json.h"

namespace {

using js::Kind;
using js::Value;

bool refused(const std::string& text) {
  Value v;
  return !js::tryParse(text, &v);
}

std::string nested(int depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonParse, TrailingBytesAfterTheDocumentAreIgnored) {
  const Value v = js::parse("{\"a\":1} trailing");
  ASSERT_TRUE(v.isObject());
  EXPECT_EQ(v["a"].number, 1);
  EXPECT_EQ(js::parse("[1]{garbage").size(), 1u);
  EXPECT_EQ(js::parse("1 2 3").number, 1);
  EXPECT_TRUE(js::parse("truex").boolean) << "the byte after a literal is never checked";
}

TEST(JsonParse, EmptyOrBlankTextIsRefused) {
  EXPECT_TRUE(refused(""));
  EXPECT_TRUE(refused(" \t\r\n"));
  EXPECT_TRUE(js::parse("   ").isNull());
}

TEST(JsonParse, OnlySpaceTabNewlineAndReturnAreWhitespace) {
  EXPECT_TRUE(js::parse(" \t\r\n[ 1 ,\n2\t]").isArray());
  EXPECT_TRUE(refused("\xEF\xBB\xBF{}")) << "a byte order mark is not whitespace";
  EXPECT_TRUE(refused("// note\n{}"));
  EXPECT_TRUE(refused("[1 /* two */]"));
}

TEST(JsonParse, LiteralNullIsAcceptedAndToldApartFromFailure) {
  Value v = js::parse("[1]");
  EXPECT_TRUE(js::tryParse("null", &v));
  EXPECT_TRUE(v.isNull());
  EXPECT_TRUE(refused("nul"));
  EXPECT_TRUE(refused("nan"));
  EXPECT_TRUE(refused("tru"));
  EXPECT_TRUE(refused("fals"));
  EXPECT_TRUE(refused("True"));
}

TEST(JsonParse, CommaBeforeAClosingBracketOrBraceIsRefused) {
  EXPECT_TRUE(refused("[1,]"));
  EXPECT_TRUE(refused("{\"a\":1,}"));
  EXPECT_TRUE(refused("[,1]"));
  EXPECT_TRUE(refused("[1 2]"));
  EXPECT_TRUE(refused("{\"a\" 1}"));
  EXPECT_TRUE(refused("{\"a\":1 \"b\":2}"));
  EXPECT_TRUE(refused("{a:1}")) << "keys must be strings";
  EXPECT_TRUE(refused("{1:1}"));
  EXPECT_TRUE(refused("[1"));
  EXPECT_TRUE(refused("{\"a\":"));
}

TEST(JsonParse, EmptyContainersMayHoldWhitespace) {
  const Value arr = js::parse("[ \n\t ]");
  EXPECT_TRUE(arr.isArray());
  EXPECT_EQ(arr.size(), 0u);
  const Value obj = js::parse("{ \r\n }");
  EXPECT_TRUE(obj.isObject());
  EXPECT_EQ(obj.size(), 0u);
  EXPECT_TRUE(js::parse("{ \"a\" : [ ] , \"b\" : { } }").isObject());
}

TEST(JsonParse, ARepeatedKeyKeepsItsLastValue) {
  const Value v = js::parse("{\"k\":1,\"k\":2}");
  EXPECT_EQ(v.size(), 1u);
  EXPECT_EQ(v["k"].number, 2);
  const Value w = js::parse("{\"k\":[1,2,3],\"j\":0,\"k\":\"x\"}");
  EXPECT_EQ(w["k"].kind, Kind::String);
  EXPECT_EQ(w["k"].string, "x");
  EXPECT_TRUE(w["k"].array.empty()) << "the earlier value is dropped, not merged";
}

TEST(JsonParse, NumbersFollowStrtodNotStrictJson) {
  EXPECT_EQ(js::parse("+1").number, 1);
  EXPECT_EQ(js::parse(".5").number, 0.5);
  EXPECT_EQ(js::parse("5.").number, 5);
  EXPECT_EQ(js::parse("0x10").number, 16);
  EXPECT_EQ(js::parse("007").number, 7);
  EXPECT_EQ(js::parse("-1.5e3").number, -1500);
  EXPECT_TRUE(std::isinf(js::parse("inf").number));
  EXPECT_TRUE(std::isinf(js::parse("-Infinity").number));
  EXPECT_TRUE(std::isinf(js::parse("1e999").number));
  EXPECT_TRUE(refused("-"));
  EXPECT_TRUE(refused("x"));
  EXPECT_TRUE(refused("]"));
}

TEST(JsonParse, EveryNumberReadsAsStrtodReadsIt) {
  // Plain decimals take a faster road than strtod; value and length must
  // come out the same on both.
  for (const char* t : {"0", "-0", "7", "-12.5", "1e5", "1E+5", "2e-3", "1e", "1e+", "-1.", "0.1e1", "00012",
                        "0x1A", "-0x1p-2", "0X10", "0x", "1e400", "-1e400", "1e-400", "4.9e-324",
                        "2.2250738585072011e-308", "9007199254740993", "123456789012345678901234567890",
                        "1.7976931348623157e308", "1.7976931348623159e308", "-inf", "-Infinity", "-nan",
                        "-nan(1)", "1..2", "1e5e5", "-.5", "-"}) {
    char* end = nullptr;
    const double expected = std::strtod(t, &end);
    const bool wholeText = end != t && *end == '\0';
    Value v;
    EXPECT_EQ(js::tryParse(std::string("[") + t + "]", &v), wholeText) << t;
    if (end == t) continue;
    const double got = js::parse(t).number;
    if (std::isnan(expected)) {
      EXPECT_TRUE(std::isnan(got)) << t;
    } else {
      EXPECT_EQ(std::memcmp(&got, &expected, sizeof got), 0) << t << ": " << got << " vs " << expected;
    }
  }
}

TEST(JsonParse, SimpleEscapesMapToTheirBytes) {
  EXPECT_EQ(js::parse("\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"").string, "\"\\/\b\f\n\r\t");
}

TEST(JsonParse, UnknownEscapesAndUnterminatedStringsAreRefused) {
  EXPECT_TRUE(refused("\"\\x41\""));
  EXPECT_TRUE(refused("\"\\a\""));
  EXPECT_TRUE(refused("\"abc"));
  EXPECT_TRUE(refused("\"abc\\"));
  EXPECT_TRUE(refused("\"\\u12"));
  EXPECT_TRUE(refused("\"\\u123"));
}

TEST(JsonParse, RawControlAndHighBytesInStringsAreKept) {
  EXPECT_EQ(js::parse("\"a\tb\nc\"").string, "a\tb\nc");
  EXPECT_EQ(js::parse(std::string("\"a\0b\"", 5)).string, std::string("a\0b", 3));
  EXPECT_EQ(js::parse("\"\xFF\xFE caf\xC3\xA9\"").string, "\xFF\xFE caf\xC3\xA9") << "UTF-8 is not validated";
}

TEST(JsonParse, UnicodeEscapesBecomeUtf8) {
  EXPECT_EQ(js::parse("\"\\u0041\"").string, "A");
  EXPECT_EQ(js::parse("\"\\u00e9\"").string, "\xC3\xA9");
  EXPECT_EQ(js::parse("\"\\u20AC\"").string, "\xE2\x82\xAC");
  EXPECT_EQ(js::parse("\"\\uFFFF\"").string, "\xEF\xBF\xBF");
}

TEST(JsonParse, SurrogatePairsJoinAndLoneSurrogatesStand) {
  EXPECT_EQ(js::parse("\"\\ud83d\\ude00\"").string, "\xF0\x9F\x98\x80");
  EXPECT_EQ(js::parse("\"\\uDBFF\\uDFFF\"").string, "\xF4\x8F\xBF\xBF");
  EXPECT_EQ(js::parse("\"\\ud83d\"").string, "\xED\xA0\xBD");
  EXPECT_EQ(js::parse("\"\\ude00\"").string, "\xED\xB8\x80") << "a low surrogate alone";
  // A high surrogate followed by something that is not a low one.
  EXPECT_EQ(js::parse("\"\\ud83d\\u0041\"").string, "\xED\xA0\xBD" "A");
  EXPECT_EQ(js::parse("\"\\ud83dx\"").string, "\xED\xA0\xBD" "x");
  EXPECT_TRUE(refused("\"\\ud83d\\ude0\"")) << "the second escape still needs four places";
}

TEST(JsonParse, StrayBytesInUnicodeEscapesCountAsZero) {
  const std::string zero = js::parse("\"\\u00zz\"").string;
  EXPECT_EQ(zero, std::string(1, '\0'));
  EXPECT_EQ(js::parse("\"\\u0g41\"").string, "A");
  EXPECT_EQ(js::parse("\"\\u\"\"\"\"\"").string, std::string(1, '\0')) << "even quotes fill the four places";
}

TEST(JsonParse, NestingUpTo512LevelsIsAcceptedAndDeeperIsRefused) {
  Value v;
  EXPECT_TRUE(js::tryParse(nested(512), &v));
  EXPECT_TRUE(refused(nested(513)));
  std::string objects;
  for (int i = 0; i < 513; ++i) objects += "{\"a\":";
  objects += "1" + std::string(513, '}');
  EXPECT_TRUE(refused(objects));
  EXPECT_TRUE(js::parse(objects.substr(5, objects.size() - 6)).isObject()) << "512 objects deep";
}

TEST(JsonParse, HugeNestingFailsCleanly) {
  EXPECT_TRUE(refused(std::string(1000000, '[')));
  EXPECT_TRUE(refused(nested(100000)));
}

TEST(JsonParse, ADocumentOfEveryKindReadsBack) {
  const Value v = js::parse(
      "{\"b\":true,\"f\":false,\"n\":null,\"num\":-2.5,\"s\":\"t\",\"a\":[1,[2,{\"x\":{}}]],\"o\":{\"p\":\"q\"}}");
  EXPECT_TRUE(v["b"].boolean);
  EXPECT_TRUE(v["f"].isBool());
  EXPECT_FALSE(v["f"].boolean);
  EXPECT_TRUE(v.has("n"));
  EXPECT_TRUE(v["n"].isNull());
  EXPECT_EQ(v["num"].number, -2.5);
  EXPECT_EQ(v["s"].string, "t");
  EXPECT_EQ(v["a"][1ul][0ul].number, 2);
  EXPECT_TRUE(v["a"][1ul][1ul]["x"].isObject());
  EXPECT_EQ(v["o"]["p"].string, "q");
}

}  // namespace
