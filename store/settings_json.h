// The settings record as the JSON object of "settings.dat", and the JSON
// names of the three board enumerations (the saves file shares them).
#pragma once

#include <string>

#include "js/json.h"
#include "store/settings.h"

namespace store {

// All 21 keys, always; unset colours as null.
js::Value settingsToJson(const Settings& s);
// Takes every member that has the right form; a document that is not an
// object changes nothing.
void settingsFromJson(const js::Value& doc, Settings* s);

// "#rrggbb" (any case) to 0xRRGGBB; false for anything else.
bool decodeColor(const js::Value& v, uint32_t* rgb);

const char* rotationModeName(RotationMode mode);
// "180" and "90"; anything else is Off.
RotationMode rotationModeFromName(const js::Value& name);

}  // namespace store
