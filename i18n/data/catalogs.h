// The compiled-in translation tables: one catalogue per language, each the
// same keys (sorted by key, newer keys appended at the end). The texts live
// in entries_<code>.cpp, one file per language; the CJK font is cut down to
// the characters found there.
#pragma once

#include <cstddef>

namespace i18n_data {

struct Entry {
  const char* key;
  const char* text;
};

struct Catalog {
  const char* code;
  const char* nativeName;
  const char* englishName;
  bool rtl;
  const Entry* entries;
  size_t count;
};

inline constexpr size_t kKeyCount = 117;
inline constexpr size_t kCatalogCount = 22;

extern const Catalog kCatalogs[kCatalogCount];

extern const Entry kEntries_de[kKeyCount];
extern const Entry kEntries_en[kKeyCount];
extern const Entry kEntries_fr[kKeyCount];
extern const Entry kEntries_es[kKeyCount];
extern const Entry kEntries_it[kKeyCount];
extern const Entry kEntries_pt[kKeyCount];
extern const Entry kEntries_nl[kKeyCount];
extern const Entry kEntries_pl[kKeyCount];
extern const Entry kEntries_cs[kKeyCount];
extern const Entry kEntries_hu[kKeyCount];
extern const Entry kEntries_ro[kKeyCount];
extern const Entry kEntries_sv[kKeyCount];
extern const Entry kEntries_da[kKeyCount];
extern const Entry kEntries_fi[kKeyCount];
extern const Entry kEntries_el[kKeyCount];
extern const Entry kEntries_tr[kKeyCount];
extern const Entry kEntries_ru[kKeyCount];
extern const Entry kEntries_ja[kKeyCount];
extern const Entry kEntries_zh[kKeyCount];
extern const Entry kEntries_ko[kKeyCount];
extern const Entry kEntries_ar[kKeyCount];
extern const Entry kEntries_he[kKeyCount];

}  // namespace i18n_data
