// Small readers and writers shared by the store's document mappings. A
// member is taken only when it has the expected kind; otherwise the field
// keeps what it had.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "js/json.h"

namespace store {

inline void readBool(const js::Value& v, bool* out) {
  if (v.isBool()) *out = v.boolean;
}

inline void readString(const js::Value& v, std::string* out) {
  if (v.isString()) *out = v.string;
}

// Non-finite numbers are refused like a wrong kind: written back they would
// make the whole file unreadable.
inline bool readNumber(const js::Value& v, double* out) {
  if (!v.isNumber() || !std::isfinite(v.number)) return false;
  *out = v.number;
  return true;
}

// The clamped readers: whatever a file says, the value ends up in lo..hi.
inline void readNumber(const js::Value& v, double* out, double lo, double hi) {
  if (readNumber(v, out)) *out = std::clamp(*out, lo, hi);
}

inline int readInt(const js::Value& v, int def, int lo, int hi) { return std::clamp(v.asInt(def), lo, hi); }

inline void readInt64(const js::Value& v, int64_t* out, int64_t lo, int64_t hi) {
  if (v.isNumber()) *out = std::clamp(v.asInt64(*out), lo, hi);
}

// The writer's side of the same guarantee: whatever the game hands in, the
// file stays parseable.
inline js::Value finiteNumber(double d) { return js::Value(std::isfinite(d) ? d : 0.0); }

}  // namespace store
