// A level picture that cannot be read is reported once, not every time the
// screen asks for it again.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/fs.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/test_support.h"
#include "ui/textures/board_image.h"

namespace {

TEST(MissingPicture, IsReportedOnceAndNotReadAgain) {
  testsupport::TempDir root;  // an asset tree without pictures
  for (const char* dir : {"/assets", "/assets/fonts", "/assets/levels"}) platform::fs::ensureDir(root.path() + dir);
  testsupport::ScopedEnv snap("SNAP", std::nullopt), appDir("APPDIR", std::nullopt);
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  testsupport::StderrCapture err;
  for (int size : {800, 800, 800, 1200}) EXPECT_EQ(ui::boardImage("level1", size, size), nullptr);
  const std::string text = err.text();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
  EXPECT_EQ(text.rfind("[image] " + root.path() + "/assets/levels/level1.jpg nicht lesbar", 0), 0u) << text;
}

}  // namespace
