#include "core/random.h"

#include <gtest/gtest.h>

#include "tests/core/reference_random.h"

namespace {

TEST(Random, FirstDrawsMatchValuesWorkedOutByHand) {
  // Seed 0: s becomes 0x6D2B79F5, 0xDA56F3EA, 0x47826DDF; the words drawn,
  // worked out separately with arbitrary-precision integers, follow.
  core::Random random(0);
  EXPECT_DOUBLE_EQ(random.next(), 1144304738 / 4294967296.0);
  EXPECT_EQ(random.state(), 0x6D2B79F5u);
  EXPECT_DOUBLE_EQ(random.next(), 1416247 / 4294967296.0);
  EXPECT_EQ(random.state(), 0xDA56F3EAu);
  EXPECT_DOUBLE_EQ(random.next(), 958946056 / 4294967296.0);
  EXPECT_EQ(random.state(), 0x47826DDFu);
}

TEST(Random, AgreesWithTheMaskedReferenceOverManySeeds) {
  for (uint32_t seed : {0u, 1u, 11u, 165783452u, 0x80000000u, 0xDEADBEEFu, 0xFFFFFFFFu}) {
    core::Random random(seed);
    reference::Generator ref(seed);
    for (int i = 0; i < 2000; ++i) {
      const double u = random.next();
      ASSERT_EQ(u, ref.next()) << "seed " << seed << " draw " << i;
      ASSERT_GE(u, 0.0);
      ASSERT_LT(u, 1.0);
      ASSERT_EQ(random.state(), ref.s);
    }
  }
}

TEST(Random, BelowIsTheFloorOfTheScaledDraw) {
  core::Random random(42);
  reference::Generator ref(42);
  for (int i = 0; i < 1000; ++i) {
    const int n = 1 + i % 110;
    const int k = random.below(n);
    EXPECT_EQ(k, static_cast<int>(ref.next() * n));
    EXPECT_LT(k, n);
  }
}

TEST(Random, LevelSeedHash) {
  // "level3_5_6", h = h * 31 + byte, modulo 2^32:
  //   'l' 108 -> 108;  'e' 101 -> 3449;  'v' 118 -> 107037;  'e' 101 -> 3318248;
  //   'l' 108 -> 102865796;  '3' 51 -> 3188839727;
  //   '_' 95 -> 98854031632 - 23 * 2^32 = 69783824;  '5' 53 -> 2163298597;
  //   '_' 95 -> 67062256602 - 15 * 2^32 = 2637747162;
  //   '6' 54 -> 81770162076 - 19 * 2^32 = 165783452.
  EXPECT_EQ(core::hashString("level3_5_6"), 165783452u);
  EXPECT_EQ(core::hashString(""), 0u);
  EXPECT_EQ(core::hashString("a"), 97u);
  // Bytes count unsigned: a UTF-8 lead byte adds 0xC3, not a negative number.
  EXPECT_EQ(core::hashString("\xC3"), 0xC3u);
  EXPECT_EQ(core::hashString("level25_10_11_rot_7"), reference::hash("level25_10_11_rot_7"));
}

TEST(Random, ShuffleIsFisherYatesFromTheBack) {
  std::vector<int> items(30);
  for (int i = 0; i < 30; ++i) items[i] = i;
  core::Random random(7);
  core::shuffle(items, random);
  reference::Generator ref(7);
  EXPECT_EQ(items, reference::shuffled(30, ref));
  EXPECT_EQ(random.state(), ref.s) << "29 draws for 30 items";
  std::vector<int> one{5};
  core::shuffle(one, random);
  EXPECT_EQ(one, std::vector<int>{5});
  EXPECT_EQ(random.state(), ref.s) << "a single item takes no draw";
}

}  // namespace
