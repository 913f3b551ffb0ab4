#include "tests/assets/asset_tree.h"

#include "platform/fs.h"

namespace assettest {

namespace {

void walk(const std::string& dir, const std::string& prefix, std::vector<std::string>& out) {
  for (const std::string& name : platform::fs::listDir(dir)) {
    const std::string path = dir + "/" + name;
    if (platform::fs::isDir(path)) {
      walk(path, prefix + name + "/", out);
    } else if (platform::fs::isFile(path)) {
      out.push_back(prefix + name);
    }
  }
}

}  // namespace

std::vector<std::string> listTree(const std::string& dir) {
  std::vector<std::string> out;
  walk(dir, "", out);
  return out;
}

}  // namespace assettest
