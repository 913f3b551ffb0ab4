// Where the game finds its folders, and what a broken picture or a crash leaves behind.
#include <gtest/gtest.h>
#include <stb_image_write.h>

#include <array>
#include <csignal>
#include <memory>
#include <vector>

#include "platform/crash.h"
#include "platform/fs.h"
#include "platform/image.h"
#include "platform/jpeg.h"
#include "platform/paths.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::ScopedEnv;
using testsupport::TempDir;

// First match wins. Values are folders in a temporary one; null unsets a
// variable, "" leaves it set but empty.
TEST(Paths, FoldersFollowTheEnvironmentInOrder) {
  TempDir t;
  for (const char* root : {"snap/usr/share/tessellatrix", "appdir/usr/share/tessellatrix", "mine"}) {
    for (const char* sub : {"/assets/fonts", "/assets/levels"}) platform::fs::ensureDir(t.file(root) + sub);
  }
  platform::fs::ensureDir(t.file("half/usr/share/tessellatrix/assets/fonts"));  // no levels: no asset root
  const char* const kVars[] = {"XDG_DATA_HOME", "XDG_CACHE_HOME", "HOME", "SNAP", "APPDIR", "TESSELLATRIX_ASSET_DIR"};
  struct Case { std::string (*resolve)(); std::array<const char*, 6> env; const char* expected; };
  const Case kCases[] = {
      {paths::resolveDataDir, {"x", "c", "h"}, "x/tessellatrix"},
      {paths::resolveDataDir, {"", "c", "h"}, "h/.local/share/tessellatrix"},
      {paths::resolveCacheDir, {"x", "c", "h"}, "c/tessellatrix"},
      {paths::resolveCacheDir, {"x", nullptr, "h"}, "h/.cache/tessellatrix"},
      {paths::resolveAssetDir, {nullptr, nullptr, nullptr, "snap", "appdir", "mine"}, "snap/usr/share/tessellatrix"},
      {paths::resolveAssetDir, {nullptr, nullptr, nullptr, "", "appdir", "mine"}, "appdir/usr/share/tessellatrix"},
      {paths::resolveAssetDir, {nullptr, nullptr, nullptr, "half", nullptr, "mine"}, "mine"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.expected);
    std::vector<std::unique_ptr<ScopedEnv>> env;
    for (size_t i = 0; i < c.env.size(); ++i) {
      const char* v = c.env[i];
      env.push_back(std::make_unique<ScopedEnv>(kVars[i], v ? std::optional(*v ? t.file(v) : "") : std::nullopt));
    }
    EXPECT_EQ(c.resolve(), t.file(c.expected));
    EXPECT_TRUE(platform::fs::isDir(t.file(c.expected))) << "created with every missing parent";
  }
}

// A picture is reduced to fit but never enlarged, a JPEG through the DCT
// scaling that leaves it no smaller than shown; a file that is no picture
// gives nothing and one line.
TEST(Images, APictureIsReducedToFitButNeverEnlarged) {
  struct Case { int w, h, maxW, maxH, shownW, shownH, denominator; };
  const Case kCases[] = {
      {400, 300, 100, 100, 100, 75, 4}, {100, 80, 1000, 1000, 100, 80, 1},  // reduced, never enlarged
      {100, 80, 50, 0, 100, 80, 1},     {1000, 1, 100, 100, 100, 1, 8},     // no bound; at least one row
      {800, 600, 100, 100, 100, 75, 8}, {801, 601, 400, 400, 400, 300, 2},  // the most the DCT may take
      {792, 600, 100, 100, 100, 76, 4},
  };
  TempDir t;
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.w << "x" << c.h << " into " << c.maxW << "x" << c.maxH);
    EXPECT_EQ(platform::jpegScaleDenominator(c.w, c.h, c.shownW, c.shownH), c.denominator);
    std::vector<unsigned char> red(static_cast<size_t>(c.w) * c.h * 3, 0);
    for (size_t i = 0; i < red.size(); i += 3) red[i] = 255;
    ASSERT_NE(stbi_write_png(t.file("p.png").c_str(), c.w, c.h, 3, red.data(), c.w * 3), 0);
    ASSERT_NE(stbi_write_jpg(t.file("p.jpg").c_str(), c.w, c.h, 3, red.data(), 95), 0);
    for (const char* file : {"p.png", "p.jpg"}) {
      cairo_surface_t* s = platform::loadImage(t.file(file), c.maxW, c.maxH);
      ASSERT_NE(s, nullptr);
      EXPECT_EQ(cairo_image_surface_get_width(s), c.shownW) << file;
      EXPECT_EQ(cairo_image_surface_get_height(s), c.shownH) << file;
      const uint32_t p = *reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(s));
      EXPECT_NEAR(int(p >> 16 & 255) - int(p >> 8 & 255) - int(p & 255), 255, 12) << file;
      cairo_surface_destroy(s);
    }
  }
  const std::string png = testsupport::readFile(t.file("p.png"));
  for (const std::string& path : {t.file("missing.jpg"), t.write("empty.jpg", ""), t.write("text.png", "no picture"),
                                  t.write("bad.jpg", "\xFF\xD8\xFF but no JPEG after all"),
                                  t.write("half.png", png.substr(0, png.size() / 2))}) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(platform::loadImage(path, 0, 0), nullptr) << path;
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err.rfind("[image] " + path + " nicht lesbar: ", 0), 0u) << err;
    EXPECT_EQ(err.find('\n'), err.size() - 1) << err;
  }
}

// A fatal signal leaves a report naming it and the last note, and the game
// still dies by that signal. Without a runtime folder it goes to the data one.
TEST(CrashReport, AFatalSignalLeavesAReport) {
  struct Case { int sig; std::string note; bool runtimeDir; std::string says; };
  const Case kCases[] = {
      {SIGSEGV, "Bild level7", true, "Signal: SIGSEGV (Zugriff auf fremden Speicher)\nZuletzt: Bild level7\n"},
      {SIGABRT, "", true, "Signal: SIGABRT (abgebrochen)\n\n"},
      {SIGTRAP, std::string(200, 'a'), false, "Zuletzt: " + std::string(120, 'a') + "\n"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.says);
    TempDir t;
    ScopedEnv runtime("XDG_RUNTIME_DIR", c.runtimeDir ? std::optional(t.path()) : std::nullopt);
    const std::string report = (c.runtimeDir ? t.path() : paths::dataDir()) + "/tessellatrix_crash.txt";
    EXPECT_EXIT((platform::installCrashHandler(), platform::setCrashContext(c.note.c_str()), std::raise(c.sig)),
                testing::KilledBySignal(c.sig), "");
    EXPECT_NE(testsupport::readFile(report).find(c.says), std::string::npos) << testsupport::readFile(report);
  }
}

}  // namespace
