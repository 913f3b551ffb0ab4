// The settings file as the player's preferences: what loads, what is kept
// from the defaults, and what is written back.
#include <gtest/gtest.h>

#include <cmath>

#include "store/settings_json.h"
#include "store/store.h"
#include "tests/store/sealed_helpers.h"

namespace {

using store::BoardLayout;
using store::BoardZoomMode;
using store::RotationMode;
using store::Settings;
using storetest::dataFile;
using storetest::openSealed;

const std::string kDefaultsText =
    "{\"bgColor\":null,\"boardColor\":null,\"boardLayout\":\"scrollTray\",\"boardZoomMode\":\"autoOnPickup\","
    "\"difficulty\":\"medium\",\"fullscreen\":false,\"gridColor\":null,\"hideConnectedBorder\":false,"
    "\"language\":\"\",\"maximized\":false,\"musicVolume\":0.34999999999999998,\"rotationMode\":\"off\","
    "\"sfxVolume\":0.75,\"showSecondRow\":true,\"soundOn\":true,\"trayBgColor\":null,\"trayBorderColor\":null,"
    "\"windowH\":800,\"windowW\":1280,\"windowX\":-1,\"windowY\":-1}";

// The settings a sealed file holding `json` gives, starting from defaults.
Settings loadFrom(const std::string& json) {
  storetest::putSealed(dataFile("settings.dat"), json);
  store::settings() = Settings();
  store::loadSettings();
  return store::settings();
}

std::string savedText(const Settings& s) {
  store::settings() = s;
  store::saveSettings();
  return openSealed(dataFile("settings.dat")).dump();
}

TEST(Settings, WithoutAFileTheDefaultsStand) {
  store::init();
  EXPECT_EQ(store::settingsToJson(store::settings()).dump(), kDefaultsText);
  EXPECT_FALSE(platform::fs::isFile(dataFile("settings.dat"))) << "loading writes nothing";
}

TEST(Settings, APlainJsonFileIsSetAsideAndTheDefaultsUsed) {
  const std::string path = dataFile("settings.dat");
  platform::fs::writeFile(path, "{\"soundOn\":false,\"difficulty\":\"master\"}");
  testing::internal::CaptureStderr();
  store::init();
  EXPECT_NE(testing::internal::GetCapturedStderr().find("[storage] " + path + " war nicht lesbar"), std::string::npos);
  EXPECT_TRUE(store::settings().soundOn);
  EXPECT_EQ(store::settings().difficulty, 1);
  EXPECT_TRUE(platform::fs::isFile(path + ".manipuliert"));
}

TEST(Settings, ADocumentThatIsNotAnObjectChangesNothing) {
  EXPECT_EQ(store::settingsToJson(loadFrom("[{\"soundOn\":false}]")).dump(), kDefaultsText);
  EXPECT_EQ(store::settingsToJson(loadFrom("{\"soundOn\":fal")).dump(), kDefaultsText);
}

TEST(Settings, VolumesAreClampedAndWrongKindsKeepTheDefault) {
  EXPECT_EQ(loadFrom("{\"musicVolume\":3}").musicVolume, 1.0);
  EXPECT_EQ(loadFrom("{\"musicVolume\":-1}").musicVolume, 0.0);
  EXPECT_EQ(loadFrom("{\"musicVolume\":\"loud\"}").musicVolume, 0.35);
  EXPECT_EQ(loadFrom("{\"sfxVolume\":0.5}").sfxVolume, 0.5);
  EXPECT_EQ(loadFrom("{\"sfxVolume\":-inf}").sfxVolume, 0.0);
  EXPECT_EQ(loadFrom("{\"sfxVolume\":-nan}").sfxVolume, 0.75) << "not a number is no volume";
}

TEST(Settings, WindowSizesHaveAFloorAndRoundHalfUp) {
  EXPECT_EQ(loadFrom("{\"windowW\":200}").windowW, 640);
  EXPECT_EQ(loadFrom("{\"windowW\":1280.6}").windowW, 1281);
  EXPECT_EQ(loadFrom("{\"windowW\":99999}").windowW, 99999) << "no upper limit";
  EXPECT_EQ(loadFrom("{\"windowH\":100}").windowH, 480);
  EXPECT_EQ(loadFrom("{\"windowH\":\"tall\"}").windowH, 800);
  const Settings pos = loadFrom("{\"windowX\":-20000,\"windowY\":12.5}");
  EXPECT_EQ(pos.windowX, -20000);
  EXPECT_EQ(pos.windowY, 13);
  EXPECT_EQ(loadFrom("{\"windowX\":null}").windowX, -1);
}

TEST(Settings, EnumNamesLoadAndUnknownNamesFallBack) {
  EXPECT_EQ(loadFrom("{\"boardLayout\":\"grid\"}").boardLayout, BoardLayout::ScrollTray);
  EXPECT_EQ(loadFrom("{\"boardLayout\":\"scatter\"}").boardLayout, BoardLayout::Scatter);
  EXPECT_EQ(loadFrom("{\"boardLayout\":\"tray\"}").boardLayout, BoardLayout::Tray);
  EXPECT_EQ(loadFrom("{\"boardLayout\":0}").boardLayout, BoardLayout::ScrollTray) << "a number is the wrong kind";
  EXPECT_EQ(loadFrom("{\"rotationMode\":\"45\"}").rotationMode, RotationMode::Off);
  EXPECT_EQ(loadFrom("{\"rotationMode\":\"180\"}").rotationMode, RotationMode::Rot180);
  EXPECT_EQ(loadFrom("{\"rotationMode\":\"90\"}").rotationMode, RotationMode::Rot90);
  EXPECT_EQ(loadFrom("{\"boardZoomMode\":\"\"}").boardZoomMode, BoardZoomMode::Off);
  EXPECT_EQ(loadFrom("{\"boardZoomMode\":\"pinch\"}").boardZoomMode, BoardZoomMode::Pinch);
  EXPECT_EQ(loadFrom("{\"boardZoomMode\":\"AutoOnPickup\"}").boardZoomMode, BoardZoomMode::Off);
  EXPECT_EQ(loadFrom("{\"boardZoomMode\":false}").boardZoomMode, BoardZoomMode::AutoOnPickup);
}

TEST(Settings, DifficultyIsStoredByName) {
  EXPECT_EQ(loadFrom("{\"difficulty\":\"easy\"}").difficulty, 0);
  EXPECT_EQ(loadFrom("{\"difficulty\":\"grandmaster\"}").difficulty, 5);
  EXPECT_EQ(loadFrom("{\"difficulty\":\"impossible\"}").difficulty, 1);
  EXPECT_EQ(loadFrom("{\"difficulty\":\"Easy\"}").difficulty, 1);
  storetest::putSealed(dataFile("settings.dat"), "{\"difficulty\":3}");
  store::settings().difficulty = 4;
  store::loadSettings();
  EXPECT_EQ(store::settings().difficulty, 4) << "a number is the wrong kind: the field keeps its value";
}

TEST(Settings, ColoursDecodeOnlyFromSevenByteHashStrings) {
  const Settings s = loadFrom("{\"bgColor\":\"#FF8800\",\"boardColor\":\"#ff880\",\"trayBgColor\":\"ff8800\","
                              "\"trayBorderColor\":\"#12345g\",\"gridColor\":\"#0a0B0c\"}");
  EXPECT_TRUE(s.bgColor.set);
  EXPECT_EQ(s.bgColor.rgb, 0xFF8800u);
  EXPECT_FALSE(s.boardColor.set);
  EXPECT_FALSE(s.trayBgColor.set);
  EXPECT_FALSE(s.trayBorderColor.set);
  EXPECT_TRUE(s.gridColor.set);
  EXPECT_EQ(s.gridColor.rgb, 0x0A0B0Cu);
  const js::Value saved = js::parse(savedText(s));
  EXPECT_EQ(saved["bgColor"].string, "#ff8800");
  EXPECT_EQ(saved["gridColor"].string, "#0a0b0c");
  EXPECT_TRUE(saved["boardColor"].isNull());
}

TEST(Settings, AColourMissingFromTheFileIsUnsetEvenIfItWasSet) {
  storetest::putSealed(dataFile("settings.dat"), "{\"soundOn\":false}");
  store::settings().bgColor = {true, 0x123456};
  store::settings().soundOn = true;
  store::loadSettings();
  EXPECT_FALSE(store::settings().bgColor.set);
  EXPECT_FALSE(store::settings().soundOn);
}

TEST(Settings, BooleansAndLanguageOfTheWrongKindKeepTheDefaults) {
  const Settings s = loadFrom("{\"soundOn\":\"no\",\"fullscreen\":1,\"maximized\":null,\"language\":7}");
  EXPECT_TRUE(s.soundOn);
  EXPECT_FALSE(s.fullscreen);
  EXPECT_FALSE(s.maximized);
  EXPECT_EQ(s.language, "");
  EXPECT_EQ(loadFrom("{\"language\":\"fa\"}").language, "fa");
}

TEST(Settings, ASavedFileHoldsAll21KeysWithNullForUnsetColours) {
  store::init();
  store::saveSettings();
  const js::Value doc = openSealed(dataFile("settings.dat"));
  EXPECT_EQ(doc.size(), 21u);
  EXPECT_EQ(doc.dump(), kDefaultsText);
  EXPECT_FALSE(platform::fs::isFile(dataFile("settings.dat.neu")));
}

TEST(Settings, EveryFieldSurvivesASaveAndALoad) {
  Settings s;
  s.language = "ar";
  s.soundOn = false;
  s.difficulty = 5;
  s.musicVolume = 0.1;
  s.sfxVolume = 1.0;
  s.boardLayout = BoardLayout::Tray;
  s.boardZoomMode = BoardZoomMode::Pinch;
  s.rotationMode = RotationMode::Rot90;
  s.showSecondRow = false;
  s.bgColor = {true, 0x000001};
  s.boardColor = {true, 0xFFFFFF};
  s.trayBgColor = {true, 0x102030};
  s.trayBorderColor = {false, 0x999999};
  s.gridColor = {true, 0};
  s.hideConnectedBorder = true;
  s.windowW = 1920;
  s.windowH = 1080;
  s.windowX = -3000;
  s.windowY = 40;
  s.maximized = true;
  s.fullscreen = true;
  const std::string first = savedText(s);
  store::settings() = Settings();
  store::loadSettings();
  EXPECT_EQ(store::settingsToJson(store::settings()).dump(), first);
  EXPECT_EQ(store::settings().musicVolume, 0.1);
  EXPECT_EQ(store::settings().gridColor.rgb, 0u);
  EXPECT_TRUE(store::settings().gridColor.set);
}

TEST(Settings, OutOfRangeValuesAreWrittenAsTheirFallbacks) {
  Settings s;
  s.boardLayout = static_cast<BoardLayout>(7);
  s.boardZoomMode = static_cast<BoardZoomMode>(9);
  s.rotationMode = static_cast<RotationMode>(-1);
  s.difficulty = 42;
  s.musicVolume = std::nan("");
  s.bgColor = {true, 0xFF123456};
  const js::Value saved = js::parse(savedText(s));
  EXPECT_EQ(saved["boardLayout"].string, "scrollTray");
  EXPECT_EQ(saved["boardZoomMode"].string, "off");
  EXPECT_EQ(saved["rotationMode"].string, "off");
  EXPECT_EQ(saved["difficulty"].string, "medium");
  EXPECT_EQ(saved["musicVolume"].number, 0) << "the file must stay readable";
  EXPECT_EQ(saved["bgColor"].string, "#123456");
}

TEST(Settings, ColourDecodingFollowsStrtoulOnTheSixDigits) {
  uint32_t rgb = 0;
  EXPECT_TRUE(store::decodeColor(js::Value("#abcdef"), &rgb));
  EXPECT_EQ(rgb, 0xABCDEFu);
  EXPECT_FALSE(store::decodeColor(js::Value("#abcdef0"), &rgb));
  EXPECT_FALSE(store::decodeColor(js::Value(std::string("#ab\0def", 7)), &rgb));
  EXPECT_FALSE(store::decodeColor(js::Value(0xABCDEF), &rgb));
  EXPECT_FALSE(store::decodeColor(js::Value(), &rgb));
  EXPECT_EQ(rgb, 0xABCDEFu) << "a failed decode leaves the colour alone";
}

}  // namespace
