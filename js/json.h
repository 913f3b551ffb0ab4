// The JSON dialect of the game's files: lenient on input (trailing bytes are
// ignored, numbers follow strtod, bad \u digits count as zero), always compact
// and sorted on output. Failures are values: null from parse, false from the
// file functions; nothing throws for bad input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <string>
#include <vector>

namespace js {

enum class Kind : int32_t { Null = 0, Bool = 1, Number = 2, String = 3, Array = 4, Object = 5 };

// One tagged value owning its children by value. Only the field named by
// `kind` is meaningful. Object members are kept unique and in byte-wise key
// order, so a document is always written back sorted. They are held in a
// sorted vector rather than a tree: one allocation per object instead of one
// per member, binary search for lookups, and appending for the sorted text
// the game writes.
struct Value {
  using Member = std::pair<std::string, Value>;

  Kind kind = Kind::Null;
  bool boolean = false;
  double number = 0;
  std::string string;
  std::vector<Value> array;
  std::vector<Member> object;  // sorted by key, keys unique

  Value() = default;
  Value(bool b) : kind(Kind::Bool), boolean(b) {}
  Value(double n) : kind(Kind::Number), number(n) {}
  Value(int n) : kind(Kind::Number), number(n) {}
  Value(long n) : kind(Kind::Number), number(static_cast<double>(n)) {}
  Value(long long n) : kind(Kind::Number), number(static_cast<double>(n)) {}
  Value(const char* s) : kind(Kind::String), string(s) {}
  Value(std::string s) : kind(Kind::String), string(std::move(s)) {}
  static Value makeArray();
  static Value makeObject();

  bool isNull() const { return kind == Kind::Null; }
  bool isBool() const { return kind == Kind::Bool; }
  bool isNumber() const { return kind == Kind::Number; }
  bool isString() const { return kind == Kind::String; }
  bool isArray() const { return kind == Kind::Array; }
  bool isObject() const { return kind == Kind::Object; }

  // A number rounded half up (floor of value + 0.5); `def` for any other kind
  // and for NaN. Values beyond the integer's range saturate.
  int asInt(int def) const;
  int64_t asInt64(int64_t def) const;

  // Failed lookups give kNull, so lookups chain without checks.
  const Value& operator[](const std::string& key) const;
  const Value& operator[](unsigned long i) const;
  size_t size() const;
  bool has(const std::string& key) const;

  // Builders: `member` and `set` make any other kind an object, `push` makes
  // it an array. `member` gives the member's value, added as null if missing.
  Value& member(const std::string& key);
  Value& set(const std::string& key, Value v) { return member(key) = std::move(v); }
  Value& push(Value v);

  std::string dump() const;
  void dumpTo(std::string& out) const;
};

extern const Value kNull;

// Nesting deeper than this many arrays and objects is refused, so that no
// file can exhaust the stack; the game's own files nest four levels.
inline constexpr int kMaxDepth = 512;

Value parse(const std::string& text);
// The same reader, telling a refused text apart from a literal null.
bool tryParse(const std::string& text, Value* out);
bool parseFile(const std::string& path, Value* out);
// Writes the compact dump to `path` + ".tmp", then replaces `path` with it.
bool writeFileAtomic(const std::string& path, const Value& v);

}  // namespace js
