// What the platform's sources share of ICU: text conversion, the one look at a status, the locale's loaded data.
//
// Nothing outside the platform's sources includes this file.

#pragma once

#include <unicode/dcfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/listformatter.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>
#include <unicode/utypes.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "platform/text/locale.h"

namespace lunabrook {

inline icu::UnicodeString unicodeFromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

inline std::string utf8FromUnicode(const icu::UnicodeString& text) {
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

// Every ICU call's status ends here; a failed one is a nil to the caller.
inline bool succeeded(UErrorCode status) { return U_SUCCESS(status) != 0; }

// What has been loaded for a locale so far; each member is made by the source that needs it, on first use.
struct Locale::Data {
    using NumberFormatter = icu::number::LocalizedNumberFormatter;
    struct ClockSeparators {
        icu::UnicodeString afterHour, afterMinute;
    };

    icu::Locale locale;
    std::string identifier;
    std::unique_ptr<icu::DecimalFormatSymbols> symbols;
    std::unique_ptr<icu::DateTimePatternGenerator> patternGenerator;
    std::map<std::string, std::string, std::less<>> patternsOfTemplates;
    std::map<std::tuple<int, int, bool>, NumberFormatter> numberFormatters;  // fraction digits, least digits, plus
    std::map<int, NumberFormatter> clockFormatters;                          // by least count of digits
    std::map<std::pair<int, unsigned>, NumberFormatter> unitFormatters;      // by style and calendar unit
    std::map<int, std::unique_ptr<icu::ListFormatter>> unitLists;            // by style
    std::optional<ClockSeparators> clockSeparators;
};

// What every number formatter of the locale is made from. The symbols are the slow part to load, so they are loaded
// once.
Locale::Data::NumberFormatter numbersOf(Locale::Data& data);

}  // namespace lunabrook
