// Putting sealed files in place and looking into them, for the store tests.
// ctest runs every test in its own process with its own data folder (see
// tests/support), so each test starts with a store that has read nothing.
#pragma once

#include <string>

#include "js/json.h"
#include "platform/fs.h"
#include "platform/paths.h"
#include "platform/seal.h"
#include "tests/support/test_support.h"

namespace storetest {

inline std::string dataFile(const std::string& name) { return paths::dataDir() + "/" + name; }

// Seals any text, valid JSON or not, as the game would have.
inline void putSealed(const std::string& path, const std::string& text) {
  platform::fs::writeFile(path, platform::saveEncrypt(text));
}

// The document a sealed file holds; null if it does not unseal or parse.
inline js::Value openSealed(const std::string& path) {
  std::string plain;
  if (platform::saveDecrypt(testsupport::readFile(path), &plain) != platform::SealResult::Ok) return js::Value();
  return js::parse(plain);
}

}  // namespace storetest
