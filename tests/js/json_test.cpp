// The JSON dialect of the game's files, read leniently and written compact.
#include <gtest/gtest.h>

#include <climits>

#include "js/json.h"

namespace {

// What the reader makes of a text, shown as the text it writes back.
std::string readBack(const std::string& text) {
  js::Value v;
  return js::tryParse(text, &v) ? v.dump() : "refused";
}

// Lenient: what follows the document is ignored, the last repeated key wins,
// numbers are strtod's, stray \u digits count as 0, lone surrogates and raw
// bytes stand. Refused (a case's default), without a crash: comments, a byte
// order mark, stray commas, bare keys, cut-off text and nesting deeper than 512.
TEST(Json, TheLenientDialectIsReadAsTheGameExpects) {
  struct Case { std::string text, written = "refused"; };
  const Case kCases[] = {
      {"{\"b\":[1,2.5],\"a\":null} and then garbage", "{\"a\":null,\"b\":[1,2.5]}"}, {"truex", "true"},
      {" \t\r\n[ 1 ,\n2\t]", "[1,2]"}, {"[ ]", "[]"}, {"{\"k\":[1],\"k\":[2]}", "{\"k\":[2]}"}, {"null", "null"},
      {"[+1,.5,5.,0x10,007,-1.5e3,1e999]", "[1,0.5,5,16,7,-1500,inf]"},
      {"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"", "\"\\\"\\\\/\\u0008\\u000c\\n\\r\\t\""},
      {"\"\\u00e9\\ud83d\\ude00\\ud83d\\u0041\"", "\"\xC3\xA9\xF0\x9F\x98\x80\xED\xA0\xBD" "A\""},
      {"\"\\u0g41\"", "\"A\""}, {"\"a\xFF\tb\"", "\"a\xFF\\tb\""},
      {std::string(512, '[') + std::string(512, ']'), std::string(512, '[') + std::string(512, ']')},
      {""}, {" "}, {"\xEF\xBB\xBF{}"}, {"// note\n{}"}, {"nul"}, {"True"}, {"nan"}, {"-"}, {"]"}, {"[1,]"},
      {"{\"a\":1,}"}, {"[1 2]"}, {"{a:1}"}, {"[1"}, {"{\"a\":"}, {"\"abc"}, {"\"\\x41\""}, {"\"\\u12"},
      {"\"\\ud83d\\ude0\""}, {std::string(513, '[') + std::string(513, ']')}, {std::string(1000000, '[')},
  };
  for (const Case& c : kCases) EXPECT_EQ(readBack(c.text), c.written) << c.text.substr(0, 40);
}

// Whatever the game builds is written so that it reads back the same: every
// byte of keys and strings and every double (the nesting is in the table above).
TEST(Json, WhatIsWrittenReadsBackTheSame) {
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  js::Value doc;
  doc.set(all, all);
  const double kNumbers[] = {0.1, 1.0 / 3, -123.456e-10, 1e15, 1e17, 5e-324, 1700000000123.0, -2.5};
  for (const double n : kNumbers) doc.member("numbers").push(n);
  const js::Value back = js::parse(doc.dump());
  EXPECT_EQ(back[all].string, all);
  for (size_t i = 0; i < std::size(kNumbers); ++i) EXPECT_EQ(back["numbers"][i].number, kNumbers[i]);
}

// Numbers from a file become integers rounded half up, saturated rather than
// overflowing, and anything else gives the caller's default.
TEST(Json, NumbersBecomeIntegersRoundedHalfUpAndSaturated) {
  struct Case { const char* text; int asInt; };
  const Case kCases[] = {{"2.5", 3},        {"-2.5", -2},      {"1280.6", 1281},  {"-0.4", 0},
                         {"1e300", INT_MAX}, {"-1e300", INT_MIN}, {"2147483648", INT_MAX}, {"-nan", 7},
                         {"\"5\"", 7},      {"true", 7}};
  for (const Case& c : kCases) EXPECT_EQ(js::parse(c.text).asInt(7), c.asInt) << c.text;
  EXPECT_EQ(js::parse("1e19").asInt64(0), LLONG_MAX);
}

}  // namespace
