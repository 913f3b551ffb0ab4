// The sealed envelope: its layout, what it rejects, and the key every
// existing file depends on.
#include "platform/seal.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using platform::SealResult;

std::string fromHex(const std::string& hex) {
  std::string out;
  for (size_t i = 0; i + 1 < hex.size(); i += 2) out += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return out;
}

SealResult unseal(const std::string& sealed, std::string* plain = nullptr) {
  return platform::saveDecrypt(sealed, plain);
}

TEST(Seal, EnvelopeIsMagicVersionNonceTagAndCiphertextOfTheTextsLength) {
  const std::string text = "{\"soundOn\":true}";
  const std::string sealed = platform::saveEncrypt(text);
  ASSERT_EQ(sealed.size(), 45 + text.size());
  EXPECT_EQ(sealed.substr(0, 4), "TSLX");
  EXPECT_EQ(sealed[4], 1);
  EXPECT_EQ(sealed.find(text), std::string::npos) << "the text is not stored in the clear";
  std::string plain;
  EXPECT_EQ(unseal(sealed, &plain), SealResult::Ok);
  EXPECT_EQ(plain, text);
}

TEST(Seal, AnEmptyTextSealsToExactly45Bytes) {
  const std::string sealed = platform::saveEncrypt("");
  EXPECT_EQ(sealed.size(), 45u);
  std::string plain = "stale";
  EXPECT_EQ(unseal(sealed, &plain), SealResult::Ok);
  EXPECT_EQ(plain, "");
}

TEST(Seal, FilesWrittenByEarlierBuildsStillOpen) {
  // Sealed once and kept: if this fails, the key constants have changed and
  // every player's settings and saves would be set aside.
  const std::string kept = fromHex(
      "54534c580127c9637422198ade9b368b08a02ab023fd494171adc998e395de5a5df7e3ed79314b37799de950582951eefda3176ffd3"
      "f72d0012fcd2cd08bf95a");
  std::string plain;
  EXPECT_EQ(unseal(kept, &plain), SealResult::Ok);
  EXPECT_EQ(plain, "{\"fullscreen\":true}");
}

TEST(Seal, EveryFlippedByteIsRejected) {
  const std::string sealed = platform::saveEncrypt("{\"difficulty\":\"hard\",\"windowW\":1280}");
  for (size_t i = 0; i < sealed.size(); ++i) {
    for (unsigned char mask : {0x01, 0x80}) {
      std::string bad = sealed;
      bad[i] = static_cast<char>(bad[i] ^ mask);
      std::string plain = "stale";
      EXPECT_EQ(unseal(bad, &plain), SealResult::Rejected) << "byte " << i;
      EXPECT_EQ(plain, "") << "byte " << i;
    }
  }
}

TEST(Seal, ShortForeignAndPlainInputsAreRejected) {
  const std::string sealed = platform::saveEncrypt("{}");
  EXPECT_EQ(unseal(""), SealResult::Empty);
  EXPECT_EQ(unseal(sealed.substr(0, 44)), SealResult::Rejected);
  EXPECT_EQ(unseal(std::string(44, 'x')), SealResult::Rejected);
  EXPECT_EQ(unseal(sealed.substr(0, sealed.size() - 1)), SealResult::Rejected) << "truncated ciphertext";
  EXPECT_EQ(unseal(sealed + "x"), SealResult::Rejected) << "appended byte";
  EXPECT_EQ(unseal("{\"language\":\"de\",\"soundOn\":false,\"difficulty\":\"easy\"}"), SealResult::Rejected);
  std::string v2 = sealed;
  v2[4] = 2;
  EXPECT_EQ(unseal(v2), SealResult::Rejected);
}

TEST(Seal, ResultWithoutAnOutputStringStillReportsTheVerdict) {
  EXPECT_EQ(unseal(platform::saveEncrypt("x"), nullptr), SealResult::Ok);
}

TEST(Seal, TwoSealsOfOneTextDiffer) {
  std::set<std::string> nonces;
  const std::string a = platform::saveEncrypt("same text");
  const std::string b = platform::saveEncrypt("same text");
  EXPECT_EQ(a.size(), b.size());
  EXPECT_NE(a, b);
  for (int i = 0; i < 1000; ++i) nonces.insert(platform::saveEncrypt("").substr(5, 24));
  EXPECT_EQ(nonces.size(), 1000u);
}

TEST(Seal, LooksSealedChecksLengthAndMagicOnly) {
  const std::string sealed = platform::saveEncrypt("");
  EXPECT_TRUE(platform::looksSealed(sealed));
  std::string v9 = sealed;
  v9[4] = 9;
  EXPECT_TRUE(platform::looksSealed(v9)) << "the version is not looked at";
  EXPECT_FALSE(platform::looksSealed(sealed.substr(0, 44)));
  EXPECT_FALSE(platform::looksSealed("{" + std::string(60, ' ') + "}"));
  EXPECT_FALSE(platform::looksSealed(""));
}

TEST(Seal, LargeTextsRoundTrip) {
  std::string text(300000, '\0');
  for (size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>(i * 31 + 7);
  std::string plain;
  ASSERT_EQ(unseal(platform::saveEncrypt(text), &plain), SealResult::Ok);
  EXPECT_EQ(plain, text);
}

}  // namespace
