// Accessors, builders and the compact writer of js::Value.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "js/json.h"

namespace js {

const Value kNull;

namespace {

// floor(x + 0.5) clamped into [lo, hi]; NaN never gets here.
template <typename Int>
Int roundHalfUp(double x) {
  const double r = std::floor(x + 0.5);
  // -min is 2^31 or 2^63: exactly representable and the first value out of
  // range, so the comparison is exact.
  constexpr double kTop = -static_cast<double>(std::numeric_limits<Int>::min());
  if (r >= kTop) return std::numeric_limits<Int>::max();
  if (r <= static_cast<double>(std::numeric_limits<Int>::min())) return std::numeric_limits<Int>::min();
  return static_cast<Int>(r);
}

void appendNumber(std::string& out, double n) {
  char buf[32];
  std::to_chars_result r;
  // Whole numbers below 1e15 print as integers (3.0 as 3, -0.0 as 0); all
  // others with 17 significant digits, which reads back to the same double.
  // to_chars is the C locale's printf whatever locale the process is in.
  if (std::floor(n) == n && std::fabs(n) < 1e15) {
    r = std::to_chars(buf, buf + sizeof buf, static_cast<long long>(n));
  } else {
    r = std::to_chars(buf, buf + sizeof buf, n, std::chars_format::general, 17);
  }
  out.append(buf, r.ptr);
}

// The first member whose key is not below `key`.
template <typename Members>
auto lowerBound(Members& members, const std::string& key) {
  return std::lower_bound(members.begin(), members.end(), key,
                          [](const Value::Member& m, const std::string& k) { return m.first < k; });
}

void appendString(std::string& out, const std::string& s) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  size_t run = 0;  // start of the bytes not yet copied
  for (size_t i = 0; i < s.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(s[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out.append(s, run, i - run);
    run = i + 1;
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        out += "\\u00";
        out += kHex[c >> 4];
        out += kHex[c & 15];
    }
  }
  out.append(s, run, std::string::npos);
  out += '"';
}

}  // namespace

Value Value::makeArray() {
  Value v;
  v.kind = Kind::Array;
  return v;
}

Value Value::makeObject() {
  Value v;
  v.kind = Kind::Object;
  return v;
}

int Value::asInt(int def) const {
  if (kind != Kind::Number || std::isnan(number)) return def;
  return roundHalfUp<int>(number);
}

int64_t Value::asInt64(int64_t def) const {
  if (kind != Kind::Number || std::isnan(number)) return def;
  return roundHalfUp<int64_t>(number);
}

const Value& Value::operator[](const std::string& key) const {
  if (kind != Kind::Object) return kNull;
  const auto it = lowerBound(object, key);
  return (it == object.end() || it->first != key) ? kNull : it->second;
}

const Value& Value::operator[](unsigned long i) const {
  return (kind == Kind::Array && i < array.size()) ? array[i] : kNull;
}

size_t Value::size() const {
  if (kind == Kind::Array) return array.size();
  if (kind == Kind::Object) return object.size();
  return 0;
}

bool Value::has(const std::string& key) const {
  if (kind != Kind::Object) return false;
  const auto it = lowerBound(object, key);
  return it != object.end() && it->first == key;
}

Value& Value::member(const std::string& key) {
  if (kind != Kind::Object) *this = makeObject();
  // Members nearly always arrive in order: the game writes them sorted.
  if (object.empty() || object.back().first < key) {
    if (object.empty()) object.reserve(8);
    return object.emplace_back(key, Value()).second;
  }
  const auto it = lowerBound(object, key);
  if (it != object.end() && it->first == key) return it->second;
  return object.emplace(it, key, Value())->second;
}

Value& Value::push(Value v) {
  if (kind != Kind::Array) *this = makeArray();
  array.push_back(std::move(v));
  return array.back();
}

std::string Value::dump() const {
  std::string out;
  dumpTo(out);
  return out;
}

void Value::dumpTo(std::string& out) const {
  switch (kind) {
    case Kind::Null: out += "null"; break;
    case Kind::Bool: out += boolean ? "true" : "false"; break;
    case Kind::Number: appendNumber(out, number); break;
    case Kind::String: appendString(out, string); break;
    case Kind::Array: {
      out += '[';
      for (size_t i = 0; i < array.size(); ++i) {
        if (i) out += ',';
        array[i].dumpTo(out);
      }
      out += ']';
      break;
    }
    case Kind::Object: {
      out += '{';
      bool first = true;
      for (const auto& [key, member] : object) {
        if (!first) out += ',';
        first = false;
        appendString(out, key);
        out += ':';
        member.dumpTo(out);
      }
      out += '}';
      break;
    }
  }
}

}  // namespace js
