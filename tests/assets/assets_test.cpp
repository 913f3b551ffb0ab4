// The asset tree as the game reads it: pictures at the catalogue's sizes,
// fonts fontconfig accepts under the families the text layer asks for,
// sounds SDL_mixer decodes, and a credits line for every file.
#include <SDL.h>
#include <SDL_mixer.h>
#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#include <stb_image.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "core/catalog.h"
#include "platform/fs.h"
#include "tests/assets/asset_tree.h"
#include "tests/support/test_support.h"

namespace {

using assettest::kRoot;
using assettest::listTree;

std::string assetPath(const std::string& rel) { return std::string(kRoot) + "/" + rel; }

// --- pictures -----------------------------------------------------------------

struct Pixels {
  std::unique_ptr<unsigned char, void (*)(void*)> data{nullptr, stbi_image_free};
  int w = 0, h = 0;
};

Pixels loadGrey(const std::string& path) {
  Pixels p;
  int comp = 0;
  p.data.reset(stbi_load(path.c_str(), &p.w, &p.h, &comp, 1));
  return p;
}

// Mean absolute difference between horizontal neighbours: a sharp photo
// has edges everywhere, a strongly blurred one almost none.
double meanHorizontalStep(const Pixels& p) {
  double sum = 0;
  for (int y = 0; y < p.h; ++y) {
    const unsigned char* row = p.data.get() + static_cast<size_t>(y) * p.w;
    for (int x = 1; x < p.w; ++x) sum += std::abs(row[x] - row[x - 1]);
  }
  return sum / (static_cast<double>(p.h) * (p.w - 1));
}

TEST(LevelPictures, EveryLevelHasItsPictureAtExactlyTheCatalogueSize) {
  ASSERT_EQ(core::levels().size(), 40u);
  for (const core::Level& level : core::levels()) {
    const std::string path = assetPath("assets/levels/" + level.id + ".jpg");
    int w = 0, h = 0, comp = 0;
    ASSERT_EQ(stbi_info(path.c_str(), &w, &h, &comp), 1) << path << ": " << stbi_failure_reason();
    EXPECT_EQ(w, level.width) << level.id;
    EXPECT_EQ(h, level.height) << level.id;
    EXPECT_EQ(comp, 3) << level.id << " should be a colour JPEG";
  }
}

TEST(LevelPictures, EveryLevelHasABlurredCopyOfTheSameShape) {
  for (const core::Level& level : core::levels()) {
    const std::string path = assetPath("assets/levels/" + level.id + "_blur.jpg");
    int w = 0, h = 0, comp = 0;
    ASSERT_EQ(stbi_info(path.c_str(), &w, &h, &comp), 1) << path << ": " << stbi_failure_reason();
    // Thumbnails crop the sharp and the blurred copy alike, so the shapes
    // must agree even though the blurred one is smaller.
    const double want = static_cast<double>(level.width) / level.height;
    EXPECT_NEAR(static_cast<double>(w) / h, want, want * 0.01) << level.id;
  }
}

TEST(LevelPictures, TheBlurredCopiesGiveNothingAway) {
  for (const core::Level& level : core::levels()) {
    const Pixels blur = loadGrey(assetPath("assets/levels/" + level.id + "_blur.jpg"));
    ASSERT_TRUE(blur.data) << level.id;
    EXPECT_LT(meanHorizontalStep(blur), 1.0) << level.id << "_blur.jpg is not blurred enough";
  }
  // The measure itself tells a sharp photograph apart.
  const Pixels sharp = loadGrey(assetPath("assets/levels/level2.jpg"));
  ASSERT_TRUE(sharp.data);
  EXPECT_GT(meanHorizontalStep(sharp), 2.0);
}

TEST(AssetTree, StaysBelowSixtyMegabytes) {
  int64_t total = 0;
  for (const std::string& rel : listTree(assetPath("assets"))) total += platform::fs::fileSize(assetPath("assets/" + rel));
  EXPECT_GT(total, 0);
  EXPECT_LT(total, 60LL * 1000 * 1000);
}

// --- fonts --------------------------------------------------------------------

struct FcConfigDeleter {
  void operator()(FcConfig* c) const { FcConfigDestroy(c); }
};
struct FcFontSetDeleter {
  void operator()(FcFontSet* s) const { FcFontSetDestroy(s); }
};
struct FcPatternDeleter {
  void operator()(FcPattern* p) const { FcPatternDestroy(p); }
};
struct FcObjectSetDeleter {
  void operator()(FcObjectSet* o) const { FcObjectSetDestroy(o); }
};

struct FontFace {
  std::string family;
  int weight = 0;
  std::string format;
  std::unique_ptr<FcCharSet, void (*)(FcCharSet*)> chars{nullptr, FcCharSetDestroy};
};

// Registers one file with a fresh fontconfig configuration, as the game does
// with its bundled fonts, and reads back what fontconfig made of it.
std::vector<FontFace> registerAlone(const std::string& file) {
  std::unique_ptr<FcConfig, FcConfigDeleter> config(FcConfigCreate());
  std::vector<FontFace> faces;
  if (!config || !FcConfigAppFontAddFile(config.get(), reinterpret_cast<const FcChar8*>(file.c_str()))) return faces;
  std::unique_ptr<FcPattern, FcPatternDeleter> all(FcPatternCreate());
  std::unique_ptr<FcObjectSet, FcObjectSetDeleter> fields(
      FcObjectSetBuild(FC_FAMILY, FC_WEIGHT, FC_FONTFORMAT, FC_CHARSET, FC_FILE, nullptr));
  std::unique_ptr<FcFontSet, FcFontSetDeleter> set(FcFontList(config.get(), all.get(), fields.get()));
  for (int i = 0; set && i < set->nfont; ++i) {
    FontFace face;
    FcChar8* text = nullptr;
    if (FcPatternGetString(set->fonts[i], FC_FAMILY, 0, &text) == FcResultMatch) face.family = reinterpret_cast<char*>(text);
    FcPatternGetInteger(set->fonts[i], FC_WEIGHT, 0, &face.weight);
    if (FcPatternGetString(set->fonts[i], FC_FONTFORMAT, 0, &text) == FcResultMatch) face.format = reinterpret_cast<char*>(text);
    FcCharSet* cs = nullptr;
    if (FcPatternGetCharSet(set->fonts[i], FC_CHARSET, 0, &cs) == FcResultMatch) face.chars.reset(FcCharSetCopy(cs));
    faces.push_back(std::move(face));
  }
  return faces;
}

TEST(BundledFonts, EachRegistersUnderTheFamilyTheTextLayerAsksFor) {
  struct Expect {
    const char* file;
    const char* family;
    int weight;
  };
  const Expect fonts[] = {
      {"assets/fonts/DejaVuSans.ttf", "DejaVu Sans", FC_WEIGHT_REGULAR},
      {"assets/fonts/DejaVuSans-Bold.ttf", "DejaVu Sans", FC_WEIGHT_BOLD},
      {"assets/fonts/QuillmossPuzzleCJK.ttf", "Quillmoss Puzzle CJK", FC_WEIGHT_REGULAR},
  };
  for (const Expect& e : fonts) {
    const std::vector<FontFace> faces = registerAlone(assetPath(e.file));
    ASSERT_EQ(faces.size(), 1u) << e.file;
    EXPECT_EQ(faces[0].family, e.family) << e.file;
    EXPECT_EQ(faces[0].weight, e.weight) << e.file;
    EXPECT_EQ(faces[0].format, "TrueType") << e.file;
  }
}

TEST(BundledFonts, TheCjkSubsetCoversChineseJapaneseAndKoreanText) {
  const std::vector<FontFace> faces = registerAlone(assetPath("assets/fonts/QuillmossPuzzleCJK.ttf"));
  ASSERT_EQ(faces.size(), 1u);
  ASSERT_TRUE(faces[0].chars);
  // A few from each required set: GB2312 level 1, JIS level 1, Hangul
  // syllables, kana, CJK punctuation, full-width forms.
  for (FcChar32 c : {0x62FCu /*拼*/, 0x56FEu /*图*/, 0x6E38u /*游*/, 0x697Du /*楽*/, 0x8A9Eu /*語*/, 0xD37Cu /*퍼*/,
                     0xC990u /*즐*/, 0x3058u /*じ*/, 0x30D1u /*パ*/, 0x3002u /*。*/, 0x300Cu /*「*/, 0xFF01u /*！*/}) {
    EXPECT_TRUE(FcCharSetHasChar(faces[0].chars.get(), c)) << std::hex << c;
  }
  // A subset, not the whole font: about two megabytes.
  EXPECT_LT(platform::fs::fileSize(assetPath("assets/fonts/QuillmossPuzzleCJK.ttf")), 2600000);
}

// Decodes UTF-8; malformed bytes come back as U+FFFD so that they fail too.
std::vector<FcChar32> codePoints(const std::string& s) {
  std::vector<FcChar32> out;
  for (size_t i = 0; i < s.size();) {
    FcChar32 c = 0;
    const int n = FcUtf8ToUcs4(reinterpret_cast<const FcChar8*>(s.data() + i), &c, static_cast<int>(s.size() - i));
    if (n <= 0) {
      out.push_back(0xFFFD);
      ++i;
      continue;
    }
    out.push_back(c);
    i += static_cast<size_t>(n);
  }
  return out;
}

TEST(BundledFonts, EveryCharacterOfTheTranslationsHasAGlyph) {
  const std::vector<FontFace> regular = registerAlone(assetPath("assets/fonts/DejaVuSans.ttf"));
  const std::vector<FontFace> bold = registerAlone(assetPath("assets/fonts/DejaVuSans-Bold.ttf"));
  const std::vector<FontFace> cjk = registerAlone(assetPath("assets/fonts/QuillmossPuzzleCJK.ttf"));
  ASSERT_TRUE(regular.size() == 1 && bold.size() == 1 && cjk.size() == 1);
  const std::string dir = std::string(kRoot) + "/i18n/data";
  int files = 0;
  for (const std::string& name : platform::fs::listDir(dir)) {
    if (name.size() < 3 || (name.substr(name.size() - 4) != ".cpp" && name.substr(name.size() - 2) != ".h")) continue;
    ++files;
    std::set<FcChar32> missing;
    for (FcChar32 c : codePoints(testsupport::readFile(dir + "/" + name))) {
      if (c < 0x80) continue;
      const bool cjkHas = FcCharSetHasChar(cjk[0].chars.get(), c);
      if (!(cjkHas || FcCharSetHasChar(regular[0].chars.get(), c)) || !(cjkHas || FcCharSetHasChar(bold[0].chars.get(), c)))
        missing.insert(c);
    }
    std::ostringstream list;
    for (FcChar32 c : missing) list << " U+" << std::hex << std::uppercase << c;
    EXPECT_TRUE(missing.empty()) << name << " uses characters no bundled font has (run tools/assets/make_fonts.py):"
                                 << list.str();
  }
  EXPECT_GE(files, 22) << "a catalogue file per language";
}

// --- sounds -------------------------------------------------------------------

class Sounds : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(SDL_Init(SDL_INIT_AUDIO), 0) << SDL_GetError();
    ASSERT_EQ(Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 1024), 0) << Mix_GetError();
  }
  void TearDown() override {
    Mix_CloseAudio();
    SDL_Quit();
  }
  struct ChunkDeleter {
    void operator()(Mix_Chunk* c) const { Mix_FreeChunk(c); }
  };
  using Chunk = std::unique_ptr<Mix_Chunk, ChunkDeleter>;
  static Chunk load(const std::string& rel) { return Chunk(Mix_LoadWAV(assetPath(rel).c_str())); }
  static double seconds(const Mix_Chunk& c) { return c.alen / (44100.0 * 2 * sizeof(int16_t)); }
};

TEST_F(Sounds, EveryEffectDecodesAndIsShort) {
  const std::map<std::string, std::pair<double, double>> effects = {
      {"sfx_click", {0.01, 0.1}}, {"sfx_pickup", {0.05, 0.5}}, {"sfx_drop", {0.05, 0.5}},
      {"sfx_snap", {0.1, 1.0}},   {"sfx_success", {2.0, 3.0}},
  };
  for (const auto& [name, range] : effects) {
    Chunk chunk = load("assets/audio/" + name + ".ogg");
    ASSERT_TRUE(chunk) << name << ": " << Mix_GetError();
    EXPECT_GE(seconds(*chunk), range.first) << name;
    EXPECT_LE(seconds(*chunk), range.second) << name;
  }
}

TEST_F(Sounds, TheMusicDecodesAndLastsTwoToThreeMinutes) {
  std::unique_ptr<Mix_Music, void (*)(Mix_Music*)> music(Mix_LoadMUS(assetPath("assets/audio/bgm_calm.ogg").c_str()),
                                                           Mix_FreeMusic);
  ASSERT_TRUE(music) << Mix_GetError();
  EXPECT_EQ(Mix_GetMusicType(music.get()), MUS_OGG);
  const double length = Mix_MusicDuration(music.get());
  EXPECT_GE(length, 120.0);
  EXPECT_LE(length, 180.0);
}

TEST_F(Sounds, TheMusicRunsIntoItsOwnBeginningWithoutAClick) {
  Chunk whole = load("assets/audio/bgm_calm.ogg");
  ASSERT_TRUE(whole) << Mix_GetError();
  const auto* s = reinterpret_cast<const int16_t*>(whole->abuf);
  const size_t frames = whole->alen / (2 * sizeof(int16_t));
  ASSERT_GT(frames, 1000u);
  // The jump from the last frame to the first, against the steps the music
  // takes anyway: a seam would stand out far above them.
  for (int ch = 0; ch < 2; ++ch) {
    std::vector<int> steps;
    for (size_t i = 1; i < frames; i += 7) steps.push_back(std::abs(s[2 * i + ch] - s[2 * (i - 1) + ch]));
    std::sort(steps.begin(), steps.end());
    const int typical = steps[steps.size() * 999 / 1000];
    const int seam = std::abs(s[ch] - s[2 * (frames - 1) + ch]);
    EXPECT_LE(seam, typical) << "channel " << ch;
  }
}

// --- credits ------------------------------------------------------------------

std::vector<std::vector<std::string>> readCredits() {
  std::vector<std::vector<std::string>> rows;
  std::istringstream in(testsupport::readFile(assetPath("assets/CREDITS.tsv")));
  std::string line;
  while (std::getline(in, line)) {
    std::vector<std::string> fields;
    size_t start = 0;
    for (size_t tab; (tab = line.find('\t', start)) != std::string::npos; start = tab + 1)
      fields.push_back(line.substr(start, tab - start));
    fields.push_back(line.substr(start));
    rows.push_back(fields);
  }
  return rows;
}

// Licence texts are the credits' own references, not assets that need one.
bool isLicenceText(const std::string& rel) { return rel.rfind("licenses/", 0) == 0 || rel == "fonts/OFL.txt"; }

TEST(Credits, EveryShippedFileHasALineNamingAuthorAndLicence) {
  const auto rows = readCredits();
  ASSERT_FALSE(rows.empty());
  const std::vector<std::string> header = {"file",    "kind",           "title",           "author",
                                           "source_package", "source_file", "license",  "package_license",
                                           "upstream_license", "license_file", "notes"};
  ASSERT_EQ(rows[0], header);
  std::set<std::string> credited;
  for (size_t i = 1; i < rows.size(); ++i) {
    const auto& r = rows[i];
    ASSERT_EQ(r.size(), header.size()) << "line " << i + 1;
    EXPECT_TRUE(credited.insert(r[0]).second) << r[0] << " is listed twice";
    EXPECT_TRUE(platform::fs::isFile(assetPath(r[0]))) << r[0] << " is credited but not shipped";
    for (int col : {2, 3, 5, 6}) EXPECT_FALSE(r[col].empty()) << r[0] << " lacks " << header[col];
    EXPECT_TRUE(platform::fs::isFile(assetPath(r[9]))) << r[0] << ": licence text " << r[9] << " is missing";
    // Pictures and fonts come from a Debian package; only our own sounds do not.
    if (r[1] != "music" && r[1] != "sound effect") {
      EXPECT_FALSE(r[4].empty()) << r[0];
    }
  }
  for (const std::string& rel : listTree(assetPath("assets"))) {
    if (rel == "CREDITS.tsv" || isLicenceText(rel)) continue;
    EXPECT_TRUE(credited.count("assets/" + rel)) << "assets/" << rel << " has no credits line";
  }
}

TEST(Credits, TheLicencesScreenRowsForMusicAndEffectsHoldTrue) {
  for (const auto& r : readCredits()) {
    if (r.size() < 7) continue;
    if (r[1] == "music") {
      EXPECT_EQ(r[6], "CC-BY-4.0") << r[0];
    } else if (r[1] == "sound effect") {
      EXPECT_EQ(r[6], "CC0-1.0") << r[0];
    } else if (r[0] == "assets/fonts/QuillmossPuzzleCJK.ttf") {
      EXPECT_EQ(r[6], "OFL-1.1");
    }
  }
}

}  // namespace
