// A locale: language, script, region and keywords, and the locale data that was loaded for it so far.
//
// Copies share what is loaded, so a number formatter or a pattern generator is built once for each locale and not
// before something needs it. Used from one thread at a time.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lunabrook {

class Locale {
public:
    // "de_DE", "de-DE", "ar_EG@numbers=latn". Nil when the locale data know no such language.
    static std::optional<Locale> named(std::string_view identifier);

    // Canonical: "de_DE", "en_US_POSIX".
    const std::string& identifier() const;

    // Of the usual script: true of "ar", "he_IL" and "az_Arab".
    bool isRightToLeft() const;

    struct Data;  // known to the platform's own sources alone
    Data& data() const { return *data_; }

private:
    explicit Locale(std::shared_ptr<Data> data) : data_(std::move(data)) {}

    std::shared_ptr<Data> data_;
};

// The locale for sentences in a language, a BCP 47 tag: `own` where that is of the same language and script, else the
// language where most people speak it. "de" -> de_DE, "pt" -> pt_BR, "zh-Hant" -> zh_Hant_TW, "de-AT" -> de_AT. Nil
// when the locale data know no such language.
std::optional<Locale> localeForLanguage(std::string_view tag, const Locale& own);

}  // namespace lunabrook
