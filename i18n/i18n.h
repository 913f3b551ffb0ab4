// Every text the player reads comes from here: 22 languages compiled in, the
// system language detected from the locale variables, placeholders filled.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace i18n {

struct Language {
  std::string code;  // "de", "pt", ...
  std::string nativeName;
  std::string englishName;
  bool rtl = false;
};

// All languages in the order the settings list shows them.
const std::vector<Language>& languages();
// A supported code from LANGUAGE, LC_ALL, LC_MESSAGES or LANG, else "en".
std::string detectSystemLanguage();
// An empty code follows the system language; an unknown one gives English.
void setLanguage(const std::string& code);
std::string currentLanguage();
bool currentIsRtl();
// The text for `key`, or the key itself when there is none (so a missing
// translation shows up on screen).
std::string tr(const std::string& key);
// The text with every "{{name}}" of each pair replaced by its value.
std::string tr(const std::string& key, std::initializer_list<std::pair<const char*, std::string>> params);

}  // namespace i18n
