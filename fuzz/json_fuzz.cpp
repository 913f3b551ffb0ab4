// Arbitrary bytes into the JSON reader. Besides what the sanitizers catch,
// whatever the reader accepts must write out and read back to the same text,
// and a number must be exactly what strtod makes of it (plain decimals take
// a faster road).
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "js/json.h"

namespace {

// Every accessor on every node, so a bad conversion shows up here too.
bool visitHoldsNan(const js::Value& v) {
  bool nan = v.isNumber() && std::isnan(v.number);
  (void)v.asInt(0);
  (void)v.asInt64(0);
  (void)v["a"];
  (void)v[0ul];
  (void)v.has("");
  for (const js::Value& e : v.array) nan = visitHoldsNan(e) || nan;
  for (const auto& member : v.object) nan = visitHoldsNan(member.second) || nan;
  return nan;
}

// A document that is one number, against strtod on the same bytes.
bool sameAsStrtod(const std::string& text, const js::Value& v) {
  const size_t start = text.find_first_not_of(" \t\r\n");
  const double expected = std::strtod(text.c_str() + start, nullptr);
  if (std::isnan(expected)) return std::isnan(v.number);
  return std::memcmp(&expected, &v.number, sizeof expected) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  js::Value v;
  if (!js::tryParse(text, &v)) return 0;
  if (v.isNumber() && !sameAsStrtod(text, v)) std::abort();
  // NaN is written as "nan", which the reader refuses: the stores never
  // write it, so it is left out of the round trip.
  if (visitHoldsNan(v)) return 0;
  const std::string once = v.dump();
  js::Value back;
  if (!js::tryParse(once, &back) || back.dump() != once) std::abort();
  return 0;
}
