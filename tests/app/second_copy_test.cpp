// A second game started on the data folder of a running one leaves it alone.
#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "platform/fs.h"
#include "platform/paths.h"
#include "tests/support/test_support.h"

namespace {

std::map<std::string, std::string> folderContents() {
  std::map<std::string, std::string> files;
  for (const std::string& name : platform::fs::listDir(paths::dataDir())) {
    files[name] = testsupport::readFile(paths::dataDir() + "/" + name);
  }
  return files;
}

TEST(SecondCopy, SaysTheFolderIsInUseAndEndsWithoutTouchingIt) {
  testsupport::TempDir logs;
  platform::fs::ensureDir(logs.file("1"));
  platform::fs::ensureDir(logs.file("2"));
  // No display: the message box cannot open, the line on standard error stays.
  const std::map<std::string, std::optional<std::string>> env = {{"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}};
  testsupport::Process first({testsupport::gameBinary()}, env, logs.file("1"));
  ASSERT_TRUE(first.waitForOutput("[video] ", 30)) << first.err();
  std::this_thread::sleep_for(std::chrono::milliseconds(500));  // its start-up writes are done
  const auto before = folderContents();

  testsupport::Process second({testsupport::gameBinary()}, env, logs.file("2"));
  EXPECT_EQ(second.wait(15).code, 0);
  EXPECT_EQ(second.err().find("[storage] " + paths::dataDir() + " wird schon von einem anderen laufenden Spiel"), 0u)
      << second.err();
  EXPECT_EQ(second.out(), "");
  EXPECT_EQ(folderContents(), before);
  first.signal(SIGTERM);
  EXPECT_EQ(first.wait(15).code, 0);
}

}  // namespace
