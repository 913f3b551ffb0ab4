// Text drawn through the game's one reused layout: fitting to a width,
// alignment, style changes, and registering the shipped fonts.
#include "ui/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "platform/fs.h"
#include "tests/support/font_support.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::TempDir;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
  void operator()(cairo_t* c) const { cairo_destroy(c); }
};

// A transparent canvas whose inked columns and rows a test can find.
struct Ink {
  explicit Ink(int w, int h, double scale = 1.0)
      : surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h)), cr(cairo_create(surface.get())) {
    cairo_scale(cr.get(), scale, scale);
  }
  int alpha(int x, int y) const {
    cairo_surface_flush(surface.get());
    const unsigned char* row =
        cairo_image_surface_get_data(surface.get()) + y * cairo_image_surface_get_stride(surface.get());
    return reinterpret_cast<const uint32_t*>(row)[x] >> 24;
  }
  // Leftmost and rightmost column with any ink; -1, -1 when blank.
  std::pair<int, int> columns() const {
    int lo = -1, hi = -1;
    const int w = cairo_image_surface_get_width(surface.get()), h = cairo_image_surface_get_height(surface.get());
    for (int x = 0; x < w; ++x) {
      for (int y = 0; y < h; ++y) {
        if (alpha(x, y) > 0) {
          if (lo < 0) lo = x;
          hi = x;
          break;
        }
      }
    }
    return {lo, hi};
  }
  std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface;
  std::unique_ptr<cairo_t, ContextDeleter> cr;
};

class Text : public ::testing::Test {
 protected:
  // The shipped fonts where the tree has them; the machine's otherwise.
  static void SetUpTestSuite() {
    testsupport::useShippedAssets();
    ::testing::internal::CaptureStderr();
    ui::registerBundledFonts();
    ::testing::internal::GetCapturedStderr();
  }

  double width(const std::string& text, const ui::TextStyle& style) {
    double w = 0, h = 0;
    ui::measureText(scratch.cr.get(), text, style, &w, &h);
    return w;
  }

  // A style whose size makes `text` exactly `target` units wide, as near as
  // the font's hinting allows.
  ui::TextStyle styleOfWidth(const std::string& text, double target) {
    ui::TextStyle s;
    s.size = 20;
    s.size *= target / width(text, s);
    return s;
  }

  Ink scratch{4, 4};
};

const std::string kSample = "Puzzle pieces snap home";

TEST_F(Text, ATooWideStringShrinksOnlyDownToTheMinimumScale) {
  ui::TextStyle style = styleOfWidth(kSample, 200);
  ASSERT_NEAR(width(kSample, style), 200, 4);
  ui::TextStyle at60 = style;
  at60.size *= 0.6;
  style.maxWidth = 100;
  style.minScale = 0.6;
  EXPECT_DOUBLE_EQ(width(kSample, style), width(kSample, at60)) << "laid out at factor 0.6";
  EXPECT_NEAR(width(kSample, style), 120, 4) << "overflowing the limit by design";

  Ink ink(400, 60);
  ui::drawText(ink.cr.get(), 10, 10, kSample, style);
  const auto [lo, hi] = ink.columns();
  EXPECT_NEAR(hi - lo, 120, 6) << "drawn as measured";
}

TEST_F(Text, AStringShrinksToTheLimitWhenTheMinimumAllowsIt) {
  ui::TextStyle style = styleOfWidth(kSample, 200);
  style.maxWidth = 150;
  style.minScale = 0.5;
  EXPECT_NEAR(width(kSample, style), 150, 3);
}

TEST_F(Text, ANarrowerStringIsDrawnAtFullSize) {
  ui::TextStyle style = styleOfWidth(kSample, 200);
  const double natural = width(kSample, style);
  style.maxWidth = 201;
  EXPECT_DOUBLE_EQ(width(kSample, style), natural);
  style.maxWidth = 0;
  style.minScale = 0.1;
  EXPECT_DOUBLE_EQ(width(kSample, style), natural) << "no limit without a max width";
}

TEST_F(Text, AlignmentAnchorsTheLeftEdgeTheCentreOrTheRightEdge) {
  ui::TextStyle style;
  style.size = 20;
  const double w = width("Solved!", style);
  ASSERT_GT(w, 40);

  style.align = ui::kAlignRight;
  Ink right(400, 60);
  ui::drawText(right.cr.get(), 300, 10, "Solved!", style);
  const auto [rlo, rhi] = right.columns();
  EXPECT_LE(rhi, 300) << "ends at x = 300";
  EXPECT_GE(rhi, 295);
  EXPECT_GE(rlo, 300 - w - 1);

  style.align = ui::kAlignLeft;
  Ink left(400, 60);
  ui::drawText(left.cr.get(), 100, 10, "Solved!", style);
  const auto [llo, lhi] = left.columns();
  EXPECT_GE(llo, 100);
  EXPECT_LE(llo, 104);
  EXPECT_LE(lhi, 100 + w + 1);

  style.align = ui::kAlignCenter;
  Ink centre(400, 60);
  ui::drawText(centre.cr.get(), 200, 10, "Solved!", style);
  const auto [clo, chi] = centre.columns();
  EXPECT_NEAR((clo + chi) / 2.0, 200, 3);
}

TEST_F(Text, CentredTextSitsInTheMiddleOfItsBoxWhateverTheAlignment) {
  ui::TextStyle style;
  style.size = 24;
  style.align = ui::kAlignRight;
  double w = 0, h = 0;
  ui::measureText(scratch.cr.get(), "Menu", style, &w, &h);
  Ink ink(300, 200);
  ui::drawTextCentered(ink.cr.get(), 150, 100, "Menu", style);
  const auto [lo, hi] = ink.columns();
  EXPECT_NEAR((lo + hi) / 2.0, 150, 3);
  int top = -1, bottom = -1;
  for (int y = 0; y < 200; ++y) {
    for (int x = lo; x <= hi; ++x) {
      if (ink.alpha(x, y) > 0) {
        if (top < 0) top = y;
        bottom = y;
        break;
      }
    }
  }
  EXPECT_GE(top, 100 - h / 2 - 1);
  EXPECT_LE(bottom, 100 + h / 2 + 1);
}

TEST_F(Text, AnEmptyStringDrawsNothing) {
  Ink ink(100, 40);
  ui::drawText(ink.cr.get(), 10, 10, "", ui::TextStyle{});
  ui::drawTextCentered(ink.cr.get(), 50, 20, "", ui::TextStyle{});
  EXPECT_EQ(ink.columns().first, -1);
}

TEST_F(Text, ColourAndAlphaComeFromTheStyle) {
  ui::TextStyle style;
  style.size = 40;
  style.bold = true;
  style.color = 0x4caf50;
  style.alpha = 0.5;
  Ink ink(200, 80);
  ui::drawText(ink.cr.get(), 10, 10, "III", style);
  int maxAlpha = 0;
  for (int x = 0; x < 200; ++x) {
    for (int y = 0; y < 80; ++y) maxAlpha = std::max(maxAlpha, ink.alpha(x, y));
  }
  EXPECT_NEAR(maxAlpha, 128, 2) << "solid stems at half alpha";
}

TEST_F(Text, EachStyleChangeTakesEffectAndSwitchingBackRestoresIt) {
  ui::TextStyle regular;
  regular.size = 18;
  ui::TextStyle bold = regular;
  bold.bold = true;
  ui::TextStyle big = regular;
  big.size = 36;
  const double w1 = width("Settings", regular);
  EXPECT_GT(width("Settings", bold), w1);
  // Twice the size, give or take the whole-pixel advances of hinting.
  EXPECT_GT(width("Settings", big), 1.9 * w1);
  EXPECT_LT(width("Settings", big), 2.1 * w1);
  EXPECT_DOUBLE_EQ(width("Settings", regular), w1);
  ui::TextStyle family = regular;
  family.family = "DejaVu Sans";
  EXPECT_NEAR(width("Settings", family), w1, 0.01) << "the same first family";
}

// The frame loop makes a new cairo context every frame, often at the address
// of the last one; the layout must follow the context it is used with.
TEST_F(Text, TextFollowsTheFrameContextAcrossFrames) {
  ui::TextStyle style;
  style.size = 20;
  double expected = 0;
  for (int frame = 0; frame < 4; ++frame) {
    const double scale = frame % 2 ? 2.0 : 1.0;
    Ink ink(600, 120, scale);
    ui::drawText(ink.cr.get(), 10, 10, "Level 3", style);
    const auto [lo, hi] = ink.columns();
    ASSERT_GE(lo, 0) << "frame " << frame;
    const double logical = (hi - lo + 1) / scale;
    if (frame == 0) expected = logical;
    EXPECT_NEAR(logical, expected, 2.5) << "frame " << frame;
  }
}

// Where a paragraph's ink lies: columns from Ink, rows found here.
std::pair<int, int> inkRows(const Ink& ink, int w, int h) {
  int top = -1, bottom = -1;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      if (ink.alpha(x, y) > 0) {
        if (top < 0) top = y;
        bottom = y;
        break;
      }
    }
  }
  return {top, bottom};
}

const std::string kParagraph = "The whole puzzle will be reset. Progress and time are lost for good.";

TEST_F(Text, AParagraphWrapsIntoCentredLinesNoWiderThanAsked) {
  ui::TextStyle style;
  style.size = 15;
  double lineW = 0, lineH = 0;
  ui::measureText(scratch.cr.get(), kParagraph, style, &lineW, &lineH);
  ASSERT_GT(lineW, 300) << "too long for one line of 200";

  Ink ink(400, 300);
  const double h = ui::drawTextWrapped(ink.cr.get(), 200, 150, kParagraph, style, 200);
  EXPECT_GE(h, 2.5 * lineH) << "three lines or more";
  const auto [lo, hi] = ink.columns();
  EXPECT_GE(lo, 100);
  EXPECT_LE(hi, 300);
  EXPECT_NEAR((lo + hi) / 2.0, 200, 6);
  const auto [top, bottom] = inkRows(ink, 400, 300);
  EXPECT_GE(top, 150 - h / 2 - 1);
  EXPECT_LE(bottom, 150 + h / 2 + 1);
  EXPECT_NEAR((top + bottom) / 2.0, 150, 5) << "the block is centred on the point";
}

TEST_F(Text, AShortParagraphIsOneCentredLine) {
  ui::TextStyle style;
  style.size = 15;
  double w = 0, lineH = 0;
  ui::measureText(scratch.cr.get(), "Solved!", style, &w, &lineH);
  Ink ink(400, 100);
  EXPECT_DOUBLE_EQ(ui::drawTextWrapped(ink.cr.get(), 200, 50, "Solved!", style, 300), lineH);
  const auto [lo, hi] = ink.columns();
  EXPECT_NEAR((lo + hi) / 2.0, 200, 3);
  EXPECT_EQ(ui::drawTextWrapped(ink.cr.get(), 200, 50, "", style, 300), 0);
}

TEST_F(Text, OneLineTextAfterAParagraphIsNotWrapped) {
  ui::TextStyle style;
  style.size = 15;
  double before = 0, lineH = 0;
  ui::measureText(scratch.cr.get(), kParagraph, style, &before, &lineH);
  ui::drawTextWrapped(scratch.cr.get(), 200, 150, kParagraph, style, 120);
  double w = 0, h = 0;
  ui::measureText(scratch.cr.get(), kParagraph, style, &w, &h);
  EXPECT_DOUBLE_EQ(w, before);
  EXPECT_DOUBLE_EQ(h, lineH);

  Ink ink(600, 60);
  ui::drawText(ink.cr.get(), 10, 10, "Level 3", style);
  EXPECT_LE(ink.columns().first, 12) << "left-aligned again";
}

TEST(Fonts, AMissingFontFileIsReportedAndTheOthersStillRegister) {
  const std::string shipped = testsupport::shippedAssetRoot() + "/assets/fonts/";
  ASSERT_TRUE(platform::fs::isFile(shipped + "DejaVuSans.ttf"));
  ASSERT_TRUE(platform::fs::isFile(shipped + "QuillmossPuzzleCJK.ttf"));
  TempDir root;
  platform::fs::ensureDir(root.file("assets/levels"));
  platform::fs::ensureDir(root.file("assets/fonts"));
  for (const char* name : {"DejaVuSans.ttf", "QuillmossPuzzleCJK.ttf"}) {
    root.write(std::string("assets/fonts/") + name, testsupport::readFile(shipped + name));
  }
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  testsupport::isolateFonts();

  ::testing::internal::CaptureStderr();
  EXPECT_FALSE(ui::registerBundledFonts());
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "[fonts] konnte " + root.path() + "/assets/fonts/DejaVuSans-Bold.ttf nicht anmelden\n");
  EXPECT_EQ(testsupport::registeredFontFiles(),
            (std::vector<std::string>{root.file("assets/fonts/DejaVuSans.ttf"),
                                      root.file("assets/fonts/QuillmossPuzzleCJK.ttf")}));

  // Text is still drawn with what there is.
  Ink ink(200, 40);
  ui::drawText(ink.cr.get(), 5, 5, "Weiter", ui::TextStyle{});
  EXPECT_GE(ink.columns().first, 0);
}

TEST(Fonts, AllThreeShippedFontsRegister) {
  const std::string shipped = testsupport::shippedAssetRoot() + "/assets/fonts/QuillmossPuzzleCJK.ttf";
  ASSERT_TRUE(platform::fs::isFile(shipped));
  testsupport::useShippedAssets();
  testsupport::isolateFonts();
  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(ui::registerBundledFonts());
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testsupport::registeredFontFiles().size(), 3u);
  // Every family the interface asks for is one the shipped files provide.
  const auto families = testsupport::registeredFontFamilies();
  std::string names;
  for (const std::string& f : families) names += " '" + f + "'";
  for (const char* family : {"DejaVu Sans", "Quillmoss Puzzle CJK"}) {
    EXPECT_NE(std::find(families.begin(), families.end(), family), families.end()) << family << " not among" << names;
    EXPECT_NE(std::string(ui::kUiFontFamily).find(family), std::string::npos);
  }
}

}  // namespace
