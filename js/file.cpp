// Reading and writing whole JSON files.
#include "js/json.h"
#include "platform/fs.h"

namespace js {

bool parseFile(const std::string& path, Value* out) {
  std::string text;
  if (!platform::fs::readFile(path, &text)) return false;
  return tryParse(text, out);
}

bool writeFileAtomic(const std::string& path, const Value& v) {
  const std::string tmp = path + ".tmp";
  if (!platform::fs::writeFile(tmp, v.dump())) return false;
  // Plain files are replaced delete-then-rename; the sealed saves use the
  // durable path in the store instead.
  platform::fs::remove(path);
  return platform::fs::replaceAtomic(tmp, path);
}

}  // namespace js
