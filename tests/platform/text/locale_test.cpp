#include "platform/text/locale.h"

#include <gtest/gtest.h>

namespace lunabrook {
namespace {

TEST(LocaleForLanguage, IsTheDevicesOwnOrTheLanguagesUsualOne) {
    struct Row {
        const char *own, *tag, *expected;  // "nil" for an unknown language
    };
    const Row rows[] = {
        {"en_GB", "en", "en_GB"},
        {"en_GB", "en-US", "en_GB"},
        {"en_GB", "de", "de_DE"},
        {"en_GB", "de-AT", "de_AT"},
        {"en_GB", "pt", "pt_BR"},
        {"pt_PT", "pt", "pt_PT"},
        {"en_GB", "zh-Hant", "zh_Hant_TW"},
        {"zh_CN", "zh-Hant", "zh_Hant_TW"},
        {"zh_CN", "zh-SG", "zh_CN"},
        {"sr_RS", "sr-Latn", "sr_Latn_RS"},
        {"he_IL", "iw", "he_IL"},
        {"en_GB", "nb_NO", "nb_NO"},
        {"en_GB", "tlh", "nil"},
        {"en_GB", "", "nil"},
        {"en_GB", "42", "nil"},
    };
    for (const Row& row : rows) {
        const auto locale = localeForLanguage(row.tag, *Locale::named(row.own));
        EXPECT_EQ(locale ? locale->identifier() : "nil", row.expected) << row.own << " " << row.tag;
    }
}

}  // namespace
}  // namespace lunabrook
