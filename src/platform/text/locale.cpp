#include "platform/text/locale.h"

#include <unicode/localebuilder.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>
#include <unicode/ures.h>

#include <algorithm>

#include "platform/text/private/icu.h"

namespace lunabrook {

namespace {

// Left alone, ICU would take its default locale and zone from the environment and answer with them where a locale's
// data end. They fall to its root data instead, and no search for the system's zone costs time.
void detachFromEnvironment() {
    static const bool kDone = [] {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale::getRoot(), status);
        icu::TimeZone::adoptDefault(icu::TimeZone::getGMT()->clone());
        return succeeded(status);
    }();
    static_cast<void>(kDone);
}

bool isWord(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
    });
}

bool localeDataKnow(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    ures_close(ures_open(nullptr, locale.getName(), &status));
    return succeeded(status) && status != U_USING_DEFAULT_WARNING;
}

// Under the names and with the script and region that are usual: "iw" is he_Hebr_IL.
icu::Locale inFull(icu::Locale locale) {
    UErrorCode status = U_ZERO_ERROR;
    locale.canonicalize(status);
    locale.addLikelySubtags(status);
    return locale;
}

}  // namespace

std::optional<Locale> Locale::named(std::string_view identifier) {
    detachFromEnvironment();
    if (identifier.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    const icu::Locale locale(std::string(identifier).c_str());
    // "root" names the data for no language.
    if (locale.isBogus() || !isWord(locale.getLanguage()) || std::string_view(locale.getLanguage()) == "root" ||
        !localeDataKnow(locale)) {
        return std::nullopt;
    }
    auto data = std::make_shared<Data>();
    data->locale = locale;
    data->identifier = locale.getName();
    return Locale(std::move(data));
}

const std::string& Locale::identifier() const { return data_->identifier; }

bool Locale::isRightToLeft() const { return data_->locale.isRightToLeft() != 0; }

std::optional<Locale> localeForLanguage(std::string_view tag, const Locale& own) {
    const auto spoken = Locale::named(tag);
    if (!spoken) {
        return std::nullopt;
    }
    const icu::Locale wanted = inFull(spoken->data().locale);
    const icu::Locale here = inFull(own.data().locale);
    if (std::string_view(wanted.getLanguage()) == here.getLanguage() &&
        std::string_view(wanted.getScript()) == here.getScript()) {
        return own;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale usual =
        icu::LocaleBuilder().setLocale(spoken->data().locale).setRegion(wanted.getCountry()).build(status);
    return succeeded(status) ? Locale::named(usual.getName()) : spoken;
}

Locale::Data::NumberFormatter numbersOf(Locale::Data& data) {
    auto numbers = icu::number::NumberFormatter::withLocale(data.locale);
    if (!data.symbols) {
        UErrorCode status = U_ZERO_ERROR;
        data.symbols = std::make_unique<icu::DecimalFormatSymbols>(data.locale, status);
        if (!succeeded(status)) {
            data.symbols.reset();
        }
    }
    return data.symbols ? std::move(numbers).symbols(*data.symbols) : numbers;
}

}  // namespace lunabrook
