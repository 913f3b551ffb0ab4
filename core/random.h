// The game's only random source and the string hash its seeds come from.
// Every cut, tray order, deal and starting rotation is drawn from here, and
// saved games are restored by drawing the same numbers again: the arithmetic
// below and the hash must never change, or every saved puzzle would be re-cut.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace core {

// A 32-bit state generator: the whole state is one word, so a caller can start
// it anywhere (the seeds are derived from level ids) and compare states.
class Random {
 public:
  explicit Random(uint32_t seed) : s_(seed) {}

  // The next draw, uniform in [0, 1).
  double next() {
    s_ += 0x6D2B79F5u;
    uint32_t t = (s_ ^ (s_ >> 15)) * (s_ | 1u);
    t ^= t + (t ^ (t >> 7)) * (t | 61u);
    return static_cast<double>(t ^ (t >> 14)) * (1.0 / 4294967296.0);
  }

  // floor(next() * n), capped at n - 1 against a draw rounding up to 1.
  int below(int n) {
    const int k = static_cast<int>(next() * n);
    return k < n - 1 ? k : n - 1;
  }

  uint32_t state() const { return s_; }

 private:
  uint32_t s_;
};

// Fisher-Yates from the back: for i = n - 1 down to 1, swap item i with item
// floor(u * (i + 1)). One draw per step, n - 1 draws in all.
template <typename T>
void shuffle(std::vector<T>& items, Random& random) {
  for (int i = static_cast<int>(items.size()) - 1; i >= 1; --i) {
    std::swap(items[i], items[random.below(i + 1)]);
  }
}

// h = h * 31 + byte over the text's bytes taken unsigned, modulo 2^32.
inline uint32_t hashString(const std::string& text) {
  uint32_t h = 0;
  for (const char c : text) h = h * 31u + static_cast<unsigned char>(c);
  return h;
}

}  // namespace core
