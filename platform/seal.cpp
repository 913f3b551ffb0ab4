// Sealing with libsodium. The key is rebuilt inside every call from constants
// compiled into the game and wiped as soon as the cipher call returns; it is
// never stored. The seal does not keep a determined player out of their own
// files (the constants are in the binary); it makes every edit or damage
// visible, so a file is either loaded whole or set aside.
#include "platform/seal.h"

#include <sodium.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <random>

namespace platform {

namespace {

constexpr size_t kNonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr size_t kTagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr size_t kKeySize = crypto_aead_xchacha20poly1305_ietf_KEYBYTES;
constexpr size_t kNonceOffset = 5;
constexpr size_t kTagOffset = kNonceOffset + kNonceSize;
static_assert(kNonceSize == 24 && kTagSize == 16 && kKeySize == 32);
static_assert(kTagOffset + kTagSize == kSealHeaderSize);

// COMPATIBILITY CONTRACT. The key is the unkeyed 32-byte BLAKE2b digest of
// these three 16-byte pieces, in this order. Every settings.dat and saves.dat
// ever written depends on them: change one byte and every player's files are
// set aside as unreadable. A new save format gets a new label ("/v2"), never
// an edit here.
constexpr unsigned char kSeeds[16] = {0x14, 0xbb, 0xc2, 0xf0, 0x2a, 0xbe, 0x36, 0xbb,
                                      0xd9, 0xa8, 0x16, 0xe9, 0xcf, 0x7c, 0xa6, 0xf3};
constexpr unsigned char kPepper[16] = {0x4f, 0x8b, 0x51, 0x6f, 0x25, 0x17, 0xc6, 0xc3,
                                       0x29, 0x92, 0xed, 0x12, 0x3b, 0xcc, 0xb0, 0xfc};
// The data folder's name and the save-format generation, NUL-padded.
constexpr char kLabel[16] = "tessellatrix/v1";

bool sodiumReady() {
  static const bool ready = sodium_init() >= 0;
  return ready;
}

// Holds the key for one cipher call and wipes it however the call ends.
class Key {
 public:
  Key() {
    unsigned char input[48];
    std::memcpy(input, kSeeds, 16);
    std::memcpy(input + 16, kPepper, 16);
    std::memcpy(input + 32, kLabel, 16);
    crypto_generichash(bytes_, sizeof bytes_, input, sizeof input, nullptr, 0);
    sodium_memzero(input, sizeof input);
  }
  ~Key() { sodium_memzero(bytes_, sizeof bytes_); }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  const unsigned char* data() const { return bytes_; }

 private:
  unsigned char bytes_[kKeySize];
};

// Six words from the system's random device, the first eight bytes mixed with
// the monotonic clock: two seals differ even if the device repeated itself.
void makeNonce(unsigned char* nonce) {
  static std::random_device device("default");
  for (size_t i = 0; i < kNonceSize / 4; ++i) {
    const uint32_t word = device();
    std::memcpy(nonce + 4 * i, &word, 4);
  }
  const uint64_t ticks = static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
  for (size_t i = 0; i < 8; ++i) nonce[i] ^= static_cast<unsigned char>(ticks >> (8 * i));
}

unsigned char* bytes(std::string& s) { return reinterpret_cast<unsigned char*>(s.data()); }
const unsigned char* bytes(const std::string& s) { return reinterpret_cast<const unsigned char*>(s.data()); }

}  // namespace

std::string saveEncrypt(const std::string& plain) {
  if (!sodiumReady()) return {};
  std::string out(kSealHeaderSize + plain.size(), '\0');
  std::memcpy(out.data(), kMagic, 4);
  out[4] = static_cast<char>(kSealVersion);
  unsigned char* nonce = bytes(out) + kNonceOffset;
  makeNonce(nonce);
  const Key key;
  crypto_aead_xchacha20poly1305_ietf_encrypt_detached(bytes(out) + kSealHeaderSize, bytes(out) + kTagOffset,
                                                      nullptr, bytes(plain), plain.size(), nullptr, 0, nullptr,
                                                      nonce, key.data());
  return out;
}

SealResult saveDecrypt(const std::string& sealed, std::string* plain) {
  if (plain) plain->clear();
  if (sealed.empty()) return SealResult::Empty;
  if (sealed.size() < kSealHeaderSize || std::memcmp(sealed.data(), kMagic, 4) != 0 ||
      static_cast<unsigned char>(sealed[4]) != kSealVersion) {
    return SealResult::Rejected;
  }
  if (!sodiumReady()) return SealResult::Unavailable;
  std::string buffer(sealed.size() - kSealHeaderSize, '\0');
  int rc;
  {
    const Key key;
    rc = crypto_aead_xchacha20poly1305_ietf_decrypt_detached(
        bytes(buffer), nullptr, bytes(sealed) + kSealHeaderSize, buffer.size(), bytes(sealed) + kTagOffset, nullptr,
        0, bytes(sealed) + kNonceOffset, key.data());
  }
  if (rc == 0 && plain) plain->assign(buffer);
  sodium_memzero(buffer.data(), buffer.size());
  return rc == 0 ? SealResult::Ok : SealResult::Rejected;
}

bool looksSealed(const std::string& data) {
  return data.size() >= kSealHeaderSize && std::memcmp(data.data(), kMagic, 4) == 0;
}

}  // namespace platform
