// The reader of the dialect. One recursive pass over the text in memory; any
// error unwinds with false and the caller gets null. What follows the first
// complete value is never looked at, deliberately: a file with garbage after
// its document still loads.
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <iterator>
#include <locale.h>

#include "js/json.h"

namespace js {

namespace {

// strtod reads the decimal point of the current locale; the files are
// written with '.', whatever language the player's system speaks.
locale_t cLocale() {
  static const locale_t loc = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return loc;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 0;  // a stray byte counts as the digit 0: lenient on purpose
}

void appendUtf8(std::string& out, uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// The end of a plain decimal number at `start` read into `*d`, or null when
// the text is not one from_chars reads the way strtod would.
const char* readDecimal(const char* start, const char* last, double* d) {
  if (*start != '-' && (*start < '0' || *start > '9')) return nullptr;
  const auto [end, ec] = std::from_chars(start, last, *d);
  if (ec != std::errc() || (end != last && (*end == 'x' || *end == 'X'))) return nullptr;
  return end;
}

class Parser {
 public:
  explicit Parser(const std::string& text) : s_(text.c_str()), n_(text.size()) {
    // Never reallocated, so a scratch list stays where it is while the
    // values inside it are parsed.
    arrays_.reserve(kMaxDepth + 1);
    objects_.reserve(kMaxDepth + 1);
  }

  // `depth` counts the arrays and objects already open around this value.
  bool value(Value& out, int depth) {
    skipSpace();
    if (pos_ >= n_) return false;
    switch (s_[pos_]) {
      case '"': out.kind = Kind::String; return string(out.string);
      case '[': return depth < kMaxDepth && array(out, depth + 1);
      case '{': return depth < kMaxDepth && object(out, depth + 1);
      case 't': return boolean(out, true) && literal("true", 4);
      case 'f': return boolean(out, false) && literal("false", 5);
      case 'n': return literal("null", 4);
      default: return number(out);
    }
  }

 private:
  // Set in place: assigning a whole new value would move every field.
  static bool boolean(Value& out, bool b) {
    out.kind = Kind::Bool;
    out.boolean = b;
    return true;
  }

  bool at(char c) const { return pos_ < n_ && s_[pos_] == c; }

  bool take(char c) {
    if (!at(c)) return false;
    ++pos_;
    return true;
  }

  void skipSpace() {
    while (pos_ < n_ && (s_[pos_] == ' ' || s_[pos_] == '\t' || s_[pos_] == '\n' || s_[pos_] == '\r')) ++pos_;
  }

  // The byte after the word is not checked: "truex" reads as true.
  bool literal(const char* word, size_t len) {
    if (n_ - pos_ < len || std::char_traits<char>::compare(s_ + pos_, word, len) != 0) return false;
    pos_ += len;
    return true;
  }

  // The number grammar is strtod's: "+1", ".5", "5.", "0x1p3" and "inf" are
  // numbers here. Plain decimal numbers, nearly all there are, take the
  // faster from_chars, which rounds them exactly as strtod does; whatever it
  // does not read alike (a plus sign or point first, hex, overflow, blanks
  // strtod would skip) goes to strtod.
  // The text is NUL-terminated, so strtod cannot run past it.
  bool number(Value& out) {
    const char* start = s_ + pos_;
    double d = 0;
    const char* end = readDecimal(start, s_ + n_, &d);
    if (!end) {
      char* stop = nullptr;
      d = strtod_l(start, &stop, cLocale());
      end = stop;
    }
    if (end == start) return false;
    pos_ += static_cast<size_t>(end - start);
    out.kind = Kind::Number;
    out.number = d;
    return true;
  }

  // Elements and members gather in a scratch list kept per depth for the
  // whole parse, then move into a container allocated once at its exact
  // size: no growing by doubling, and no slack left in the tree.
  template <typename T>
  std::vector<T>& scratch(std::vector<std::vector<T>>& lists, int depth) {
    if (lists.size() <= static_cast<size_t>(depth)) lists.resize(depth + 1);
    return lists[depth];
  }

  template <typename T>
  static void moveInto(std::vector<T>& list, size_t from, std::vector<T>* out) {
    out->reserve(list.size() - from);
    std::move(list.begin() + from, list.end(), std::back_inserter(*out));
    list.resize(from);
  }

  bool array(Value& out, int depth) {
    ++pos_;
    out.kind = Kind::Array;
    skipSpace();
    if (take(']')) return true;
    std::vector<Value>& items = scratch(arrays_, depth);
    const size_t from = items.size();
    for (;;) {
      items.emplace_back();
      if (!value(items.back(), depth)) return false;
      skipSpace();
      if (take(']')) break;
      if (!take(',')) return false;
    }
    moveInto(items, from, &out.array);
    return true;
  }

  bool object(Value& out, int depth) {
    ++pos_;
    out.kind = Kind::Object;
    skipSpace();
    if (take('}')) return true;
    std::vector<Value::Member>& members = scratch(objects_, depth);
    const size_t from = members.size();
    bool sorted = true;  // keys unique and in order, as the game writes them
    for (;;) {
      skipSpace();
      members.emplace_back();
      Value::Member& m = members.back();
      if (!at('"') || !string(m.first)) return false;
      sorted = sorted && (members.size() - from == 1 || members[members.size() - 2].first < m.first);
      skipSpace();
      if (!take(':')) return false;
      if (!value(m.second, depth)) return false;
      skipSpace();
      if (take('}')) break;
      if (!take(',')) return false;
    }
    if (sorted) {
      moveInto(members, from, &out.object);
      return true;
    }
    // A repeated key: the last one wins.
    for (size_t i = from; i < members.size(); ++i) out.member(members[i].first) = std::move(members[i].second);
    members.resize(from);
    return true;
  }

  // At the opening quote. Raw control bytes and bytes above 0x7F are taken
  // as they are; the text is not checked for valid UTF-8.
  bool string(std::string& out) {
    ++pos_;
    for (;;) {
      const size_t start = pos_;
      while (pos_ < n_ && s_[pos_] != '"' && s_[pos_] != '\\') ++pos_;
      out.append(s_ + start, pos_ - start);
      if (pos_ >= n_) return false;
      if (s_[pos_++] == '"') return true;
      if (!escape(out)) return false;
    }
  }

  bool escape(std::string& out) {
    if (pos_ >= n_) return false;
    switch (s_[pos_++]) {
      case '"': out += '"'; return true;
      case '\\': out += '\\'; return true;
      case '/': out += '/'; return true;
      case 'b': out += '\b'; return true;
      case 'f': out += '\f'; return true;
      case 'n': out += '\n'; return true;
      case 'r': out += '\r'; return true;
      case 't': out += '\t'; return true;
      case 'u': return unicode(out);
      default: return false;
    }
  }

  uint32_t hex4(size_t at) const {
    uint32_t v = 0;
    for (size_t i = 0; i < 4; ++i) v = v * 16 + static_cast<uint32_t>(hexDigit(s_[at + i]));
    return v;
  }

  // After "\u". A high surrogate directly followed by an escaped low one
  // makes one code point; any other surrogate is written as it stands.
  bool unicode(std::string& out) {
    if (n_ - pos_ < 4) return false;
    uint32_t unit = hex4(pos_);
    pos_ += 4;
    if (unit >= 0xD800 && unit <= 0xDBFF && n_ - pos_ >= 6 && s_[pos_] == '\\' && s_[pos_ + 1] == 'u') {
      const uint32_t low = hex4(pos_ + 2);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        pos_ += 6;
      }
    }
    appendUtf8(out, unit);
    return true;
  }

  const char* s_;
  size_t n_;
  size_t pos_ = 0;
  std::vector<std::vector<Value>> arrays_;
  std::vector<std::vector<Value::Member>> objects_;
};

}  // namespace

bool tryParse(const std::string& text, Value* out) {
  Value v;
  Parser parser(text);
  if (!parser.value(v, 0)) return false;
  *out = std::move(v);
  return true;
}

Value parse(const std::string& text) {
  Value v;
  tryParse(text, &v);
  return v;
}

}  // namespace js
