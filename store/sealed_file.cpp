#include "store/sealed_file.h"

#include <cstdio>

#include "platform/fs.h"
#include "platform/seal.h"

namespace store {

namespace {

std::string folderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

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
  const std::string tmp = path + ".neu";
  // The rename replaces the target in one step (no delete before it); the
  // file is synced first so the rename can never publish unwritten blocks,
  // and the folder after, so the rename itself survives a power cut.
  if (!platform::fs::writeFile(tmp, envelope) || !platform::fs::syncFile(tmp) ||
      !platform::fs::replaceAtomic(tmp, path)) {
    platform::fs::remove(tmp);
    return;
  }
  platform::fs::syncFile(folderOf(path));
}

}  // namespace store
