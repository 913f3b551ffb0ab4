#include "i18n/data/catalogs.h"

namespace i18n_data {

const Catalog kCatalogs[kCatalogCount] = {
    {"de", "Deutsch", "German", false, kEntries_de, kKeyCount},
    {"en", "English", "English", false, kEntries_en, kKeyCount},
    {"fr", "Français", "French", false, kEntries_fr, kKeyCount},
    {"es", "Español", "Spanish", false, kEntries_es, kKeyCount},
    {"it", "Italiano", "Italian", false, kEntries_it, kKeyCount},
    {"pt", "Português", "Portuguese", false, kEntries_pt, kKeyCount},
    {"nl", "Nederlands", "Dutch", false, kEntries_nl, kKeyCount},
    {"pl", "Polski", "Polish", false, kEntries_pl, kKeyCount},
    {"cs", "Čeština", "Czech", false, kEntries_cs, kKeyCount},
    {"hu", "Magyar", "Hungarian", false, kEntries_hu, kKeyCount},
    {"ro", "Română", "Romanian", false, kEntries_ro, kKeyCount},
    {"sv", "Svenska", "Swedish", false, kEntries_sv, kKeyCount},
    {"da", "Dansk", "Danish", false, kEntries_da, kKeyCount},
    {"fi", "Suomi", "Finnish", false, kEntries_fi, kKeyCount},
    {"el", "Ελληνικά", "Greek", false, kEntries_el, kKeyCount},
    {"tr", "Türkçe", "Turkish", false, kEntries_tr, kKeyCount},
    {"ru", "Русский", "Russian", false, kEntries_ru, kKeyCount},
    {"ja", "日本語", "Japanese", false, kEntries_ja, kKeyCount},
    {"zh", "中文", "Chinese (Simplified)", false, kEntries_zh, kKeyCount},
    {"ko", "한국어", "Korean", false, kEntries_ko, kKeyCount},
    {"ar", "العربية", "Arabic", true, kEntries_ar, kKeyCount},
    {"he", "עברית", "Hebrew", true, kEntries_he, kKeyCount},
};

}  // namespace i18n_data
