// A level picture that cannot be read is reported once, not every time the
// screen asks for it again.
#include <gtest/gtest.h>

#include "platform/fs.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/test_support.h"
#include "ui/textures/board_image.h"

TEST(MissingPicture, IsReportedOnceAndNotReadAgain) {
  testsupport::TempDir root;  // an asset tree without pictures
  for (const char* dir : {"/assets/fonts", "/assets/levels"}) platform::fs::ensureDir(root.path() + dir);
  testsupport::ScopedEnv snap("SNAP", std::nullopt), appDir("APPDIR", std::nullopt);
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  const std::string err = testsupport::stderrOf([] {
    for (int size : {800, 800, 800, 1200}) EXPECT_EQ(ui::boardImage("level1", size, size), nullptr);
  });
  EXPECT_EQ(err.find("[image] " + root.path() + "/assets/levels/level1.jpg nicht lesbar"), 0u) << err;
  EXPECT_EQ(err.find('\n'), err.size() - 1) << err;
}
