#include "store/sealed_file.h"

#include <cstdio>

#include "platform/fs.h"
#include "platform/seal.h"

namespace store {

std::string readSealed(const std::string& path) {
  std::string sealed;
  if (!platform::fs::readFile(path, &sealed) || sealed.empty()) return {};
  std::string plain;
  const platform::SealResult result = platform::saveDecrypt(sealed, &plain);
  if (result == platform::SealResult::Ok) return plain;
  // There is deliberately no plain-JSON fallback: whatever is not a valid
  // envelope is moved out of the way, not loaded and not overwritten.
  if (result == platform::SealResult::Rejected) {
    std::fprintf(stderr, "[storage] %s war nicht lesbar \xE2\x80\x94 beiseitegelegt\n", path.c_str());
    platform::fs::replaceAtomic(path, path + ".manipuliert");
  }
  return {};
}

void writeSealed(const std::string& path, const js::Value& doc) {
  const std::string envelope = platform::saveEncrypt(doc.dump());
  if (envelope.empty()) return;
  platform::fs::writeDurably(path, envelope, ".neu");
}

}  // namespace store
