// The sealed envelope of the settings and saves files: the JSON text
// encrypted and authenticated (XChaCha20-Poly1305), so that a hand-edited or
// damaged file is recognised and never half-loaded.
//
//   offset  size  field
//        0     4  "TSLX"
//        4     1  format version, 1
//        5    24  nonce
//       29    16  authentication tag
//       45     n  ciphertext, as long as the text it seals
#pragma once

#include <cstddef>
#include <string>

namespace platform {

inline constexpr char kMagic[4] = {'T', 'S', 'L', 'X'};
inline constexpr unsigned char kSealVersion = 1;
inline constexpr size_t kSealHeaderSize = 45;

enum class SealResult : int {
  Ok = 0,
  Empty = 1,     // no input at all
  Rejected = 2,  // too short, foreign magic or version, or failed authentication
  // The crypto library could not start; nothing can be said about the data,
  // so callers must neither trust nor discard it.
  Unavailable = 3,
};

// The complete envelope; empty only if the crypto library could not start.
std::string saveEncrypt(const std::string& plain);
// Clears `plain` (when given) first and fills it only on success.
SealResult saveDecrypt(const std::string& sealed, std::string* plain);
// At least a header long and starting with the magic; for tools, the stores
// do not need it.
bool looksSealed(const std::string& data);

}  // namespace platform
