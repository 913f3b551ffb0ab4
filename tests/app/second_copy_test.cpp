// A second game started on the data folder of a running one leaves it alone.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "platform/fs.h"
#include "platform/paths.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::Process;

// Every file of the data folder with its contents.
std::map<std::string, std::string> folderContents() {
  std::map<std::string, std::string> files;
  for (const std::string& name : platform::fs::listDir(paths::dataDir())) {
    files[name] = testsupport::readFile(paths::dataDir() + "/" + name);
  }
  return files;
}

TEST(SecondCopy, SaysTheFolderIsInUseAndEndsWithoutTouchingIt) {
  testsupport::TempDir logs;
  platform::fs::ensureDir(logs.file("first"));
  platform::fs::ensureDir(logs.file("second"));
  // No display: the message box cannot open and the line on standard error
  // is all the second copy shows.
  const std::map<std::string, std::optional<std::string>> env = {{"DISPLAY", std::nullopt},
                                                                 {"WAYLAND_DISPLAY", std::nullopt}};
  Process first({testsupport::gameBinary()}, env, logs.file("first"));
  ASSERT_TRUE(first.waitForOutput("[video] ", 30)) << first.err();
  std::this_thread::sleep_for(std::chrono::milliseconds(500));  // its start-up writes are done
  const auto before = folderContents();

  Process second({testsupport::gameBinary()}, env, logs.file("second"));
  const testsupport::ExitStatus st = second.wait(15);
  EXPECT_TRUE(st.exited);
  EXPECT_EQ(st.code, 0);
  EXPECT_NE(second.err().find("[storage] " + paths::dataDir() + " wird schon von einem anderen laufenden Spiel"),
            std::string::npos)
      << second.err();
  EXPECT_EQ(second.out(), "");
  EXPECT_EQ(folderContents(), before);

  first.signal(SIGTERM);
  EXPECT_EQ(first.wait(15).code, 0);
}

}  // namespace
