// The game's generator and string hash written again from their definitions,
// in 64-bit arithmetic masked back to 32 bits after every step, so the tests
// check core::Random against an independent calculation rather than itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace reference {

constexpr uint64_t kMask = 0xFFFFFFFFull;

struct Generator {
  uint64_t s;

  explicit Generator(uint64_t seed) : s(seed & kMask) {}

  uint64_t nextWord() {
    s = (s + 0x6D2B79F5ull) & kMask;
    uint64_t t = ((s ^ (s >> 15)) * (s | 1ull)) & kMask;
    const uint64_t mix = (((t ^ (t >> 7)) * (t | 61ull)) & kMask);
    t = (t ^ ((t + mix) & kMask)) & kMask;
    return t ^ (t >> 14);
  }
  double next() { return static_cast<double>(nextWord()) / 4294967296.0; }
  int below(int n) {
    int k = static_cast<int>(next() * n);
    return k > n - 1 ? n - 1 : k;
  }
};

inline uint64_t hash(const std::string& text) {
  uint64_t h = 0;
  for (unsigned char b : text) h = (h * 31 + b) & kMask;
  return h;
}

// 0 .. n-1 shuffled from the back, one draw per step.
inline std::vector<int> shuffled(int n, Generator& g) {
  std::vector<int> v(n);
  for (int i = 0; i < n; ++i) v[i] = i;
  for (int i = n - 1; i >= 1; --i) {
    const int j = g.below(i + 1);
    const int tmp = v[i];
    v[i] = v[j];
    v[j] = tmp;
  }
  return v;
}

}  // namespace reference
