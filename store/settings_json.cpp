#include "store/settings_json.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/catalog.h"
#include "store/json_fields.h"

namespace store {

namespace {

struct EnumName {
  int value;
  const char* name;
};

// Each table's fallback is both what an unknown name loads as and what an
// out-of-range value is written as, so a bad value can never survive a save.
struct EnumNames {
  const EnumName* rows;
  size_t count;
  int fallback;
};

constexpr EnumName kLayoutRows[] = {{0, "scatter"}, {1, "tray"}, {2, "scrollTray"}};
constexpr EnumName kZoomRows[] = {{0, "off"}, {1, "autoOnPickup"}, {2, "pinch"}};
constexpr EnumName kRotationRows[] = {{0, "off"}, {1, "180"}, {2, "90"}};
constexpr EnumNames kLayoutNames = {kLayoutRows, 3, 2};
constexpr EnumNames kZoomNames = {kZoomRows, 3, 0};
constexpr EnumNames kRotationNames = {kRotationRows, 3, 0};

const char* nameOf(const EnumNames& names, int value) {
  const char* fallback = "";
  for (size_t i = 0; i < names.count; ++i) {
    if (names.rows[i].value == value) return names.rows[i].name;
    if (names.rows[i].value == names.fallback) fallback = names.rows[i].name;
  }
  return fallback;
}

int valueOf(const EnumNames& names, const js::Value& name) {
  for (size_t i = 0; i < names.count; ++i) {
    if (name.string == names.rows[i].name) return names.rows[i].value;
  }
  return names.fallback;
}

template <typename Enum>
void readEnum(const js::Value& v, const EnumNames& names, Enum* out) {
  if (v.isString()) *out = static_cast<Enum>(valueOf(names, v));
}

template <typename T>
struct FieldKey {
  const char* key;
  T Settings::*field;
};
constexpr FieldKey<bool> kBoolKeys[] = {
    {"soundOn", &Settings::soundOn},     {"showSecondRow", &Settings::showSecondRow},
    {"hideConnectedBorder", &Settings::hideConnectedBorder}, {"maximized", &Settings::maximized},
    {"fullscreen", &Settings::fullscreen},  {"reducedMotion", &Settings::reducedMotion},
    {"strongOutlines", &Settings::strongOutlines},
};

constexpr FieldKey<OptColor> kColorKeys[] = {
    {"bgColor", &Settings::bgColor},         {"boardColor", &Settings::boardColor},
    {"trayBgColor", &Settings::trayBgColor}, {"trayBorderColor", &Settings::trayBorderColor},
    {"gridColor", &Settings::gridColor},
};

// Window sizes have a floor and no ceiling; positions have neither.
struct IntKey {
  const char* key;
  int Settings::*field;
  int minimum, maximum;
};
// Far beyond any screen, far from overflowing when the window is placed.
constexpr int kMaxWindowUnits = 1000000;
constexpr IntKey kIntKeys[] = {
    {"windowW", &Settings::windowW, 640, kMaxWindowUnits},
    {"windowH", &Settings::windowH, 480, kMaxWindowUnits},
    {"windowX", &Settings::windowX, -kMaxWindowUnits, kMaxWindowUnits},
    {"windowY", &Settings::windowY, -kMaxWindowUnits, kMaxWindowUnits},
};

// A size between the offered ones becomes the nearest of them (the smaller
// on a tie), one outside them the nearer end.
void readInterfaceScale(const js::Value& v, int* out) {
  if (!v.isNumber() || std::isnan(v.number)) return;
  const double wanted = std::clamp(v.number, 0.0, 1000.0);
  int best = kInterfaceScales[0];
  for (const int size : kInterfaceScales) {
    if (std::fabs(wanted - size) < std::fabs(wanted - best)) best = size;
  }
  *out = best;
}

void readVolume(const js::Value& v, double* out) {
  if (v.isNumber() && !std::isnan(v.number)) *out = std::clamp(v.number, 0.0, 1.0);
}

void readDifficulty(const js::Value& v, int* out) {
  if (!v.isString()) return;
  *out = 1;  // a name that is not in the table
  for (const core::DifficultyDef& d : core::difficulties()) {
    if (v.string == d.id) *out = d.index;
  }
}

const char* difficultyName(int index) {
  const auto& table = core::difficulties();
  for (const core::DifficultyDef& d : table) {
    if (d.index == index) return d.id;
  }
  return table[1].id;  // the default difficulty stands in for a broken index
}

js::Value colorJson(const OptColor& c) {
  if (!c.set) return js::Value();
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%06x", static_cast<unsigned>(c.rgb & 0xFFFFFF));
  return js::Value(buf);
}

}  // namespace

const char* rotationModeName(RotationMode mode) { return nameOf(kRotationNames, static_cast<int>(mode)); }

RotationMode rotationModeFromName(const js::Value& name) {
  return name.isString() ? static_cast<RotationMode>(valueOf(kRotationNames, name)) : RotationMode::Off;
}

bool decodeColor(const js::Value& v, uint32_t* rgb) {
  if (!v.isString() || v.string.size() != 7 || v.string[0] != '#') return false;
  const char* digits = v.string.c_str() + 1;
  char* end = nullptr;
  const unsigned long n = std::strtoul(digits, &end, 16);
  if (end != digits + 6) return false;
  *rgb = static_cast<uint32_t>(n & 0xFFFFFF);
  return true;
}

js::Value settingsToJson(const Settings& s) {
  js::Value doc = js::Value::makeObject();
  doc.set("language", js::Value(s.language));
  for (const FieldKey<bool>& k : kBoolKeys) doc.set(k.key, js::Value(s.*k.field));
  doc.set("difficulty", js::Value(difficultyName(s.difficulty)));
  doc.set("musicVolume", finiteNumber(s.musicVolume));
  doc.set("sfxVolume", finiteNumber(s.sfxVolume));
  doc.set("boardLayout", js::Value(nameOf(kLayoutNames, static_cast<int>(s.boardLayout))));
  doc.set("boardZoomMode", js::Value(nameOf(kZoomNames, static_cast<int>(s.boardZoomMode))));
  doc.set("rotationMode", js::Value(rotationModeName(s.rotationMode)));
  for (const FieldKey<OptColor>& k : kColorKeys) doc.set(k.key, colorJson(s.*k.field));
  for (const IntKey& k : kIntKeys) doc.set(k.key, js::Value(s.*k.field));
  doc.set("interfaceScale", js::Value(s.interfaceScale));
  return doc;
}

void settingsFromJson(const js::Value& doc, Settings* s) {
  if (!doc.isObject()) return;
  readString(doc["language"], &s->language);
  for (const FieldKey<bool>& k : kBoolKeys) readBool(doc[k.key], &(s->*k.field));
  readDifficulty(doc["difficulty"], &s->difficulty);
  readVolume(doc["musicVolume"], &s->musicVolume);
  readVolume(doc["sfxVolume"], &s->sfxVolume);
  readEnum(doc["boardLayout"], kLayoutNames, &s->boardLayout);
  readEnum(doc["boardZoomMode"], kZoomNames, &s->boardZoomMode);
  readEnum(doc["rotationMode"], kRotationNames, &s->rotationMode);
  for (const FieldKey<OptColor>& k : kColorKeys) {
    OptColor& c = s->*k.field;
    c.set = decodeColor(doc[k.key], &c.rgb);
  }
  for (const IntKey& k : kIntKeys) {
    const js::Value& v = doc[k.key];
    if (v.isNumber()) s->*k.field = readInt(v, 0, k.minimum, k.maximum);
  }
  readInterfaceScale(doc["interfaceScale"], &s->interfaceScale);
}

}  // namespace store
