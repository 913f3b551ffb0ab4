#include "i18n/i18n.h"

#include <cctype>
#include <cstdlib>
#include <string_view>
#include <unordered_map>

#include "i18n/data/catalogs.h"

namespace i18n {

namespace {

constexpr size_t kEnglish = 1;

struct State {
  size_t current = kEnglish;
  std::string setting;  // as last passed to setLanguage; empty follows the system
  // Key to text of the current catalogue, pointing into the static tables;
  // empty until first needed.
  std::unordered_map<std::string_view, const char*> lookup;
};

State& state() {
  static State s;
  return s;
}

const i18n_data::Catalog& currentCatalog() { return i18n_data::kCatalogs[state().current]; }

void rebuildLookup() {
  State& s = state();
  s.lookup.clear();
  const i18n_data::Catalog& c = currentCatalog();
  for (size_t i = 0; i < c.count; ++i) {
    if (c.entries[i].key && c.entries[i].text) s.lookup.emplace(c.entries[i].key, c.entries[i].text);
  }
}

// -1 when no catalogue has exactly this code.
int catalogIndex(std::string_view code) {
  for (size_t i = 0; i < i18n_data::kCatalogCount; ++i) {
    if (code == i18n_data::kCatalogs[i].code) return static_cast<int>(i);
  }
  return -1;
}

// "pt_BR.UTF-8@euro" gives "pt": everything before the region, encoding or modifier.
std::string languagePart(std::string_view item) {
  std::string lang(item.substr(0, item.find_first_of("_-.@")));
  for (char& ch : lang) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return lang;
}

}  // namespace

const std::vector<Language>& languages() {
  static const std::vector<Language> list = [] {
    std::vector<Language> out;
    for (const i18n_data::Catalog& c : i18n_data::kCatalogs) out.push_back({c.code, c.nativeName, c.englishName, c.rtl});
    return out;
  }();
  return list;
}

std::string detectSystemLanguage() {
  for (const char* var : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(var);
    if (!value || !*value) continue;
    std::string_view rest(value);
    while (true) {
      const size_t colon = rest.find(':');
      const std::string lang = languagePart(rest.substr(0, colon));
      if (catalogIndex(lang) >= 0) return lang;
      if (colon == std::string_view::npos) break;
      rest.remove_prefix(colon + 1);
    }
  }
  return "en";
}

void setLanguage(const std::string& code) {
  State& s = state();
  s.setting = code;
  const int index = catalogIndex(code.empty() ? detectSystemLanguage() : code);
  s.current = index >= 0 ? static_cast<size_t>(index) : kEnglish;
  rebuildLookup();
}

std::string currentLanguage() { return currentCatalog().code; }

bool currentIsRtl() { return currentCatalog().rtl; }

std::string tr(const std::string& key) {
  State& s = state();
  if (s.lookup.empty()) rebuildLookup();
  const auto it = s.lookup.find(key);
  return it == s.lookup.end() ? key : std::string(it->second);
}

std::string tr(const std::string& key, std::initializer_list<std::pair<const char*, std::string>> params) {
  std::string text = tr(key);
  for (const auto& [name, value] : params) {
    const std::string pattern = std::string("{{") + name + "}}";
    // Resuming after each inserted value keeps a value that itself looks like
    // a placeholder from being expanded again.
    for (size_t at = text.find(pattern); at != std::string::npos; at = text.find(pattern, at + value.size())) {
      text.replace(at, pattern.size(), value);
    }
  }
  return text;
}

}  // namespace i18n
