#include "platform/text/collation.h"

#include <unicode/brkiter.h>
#include <unicode/coll.h>

#include "platform/text/private/icu.h"

namespace lunabrook {

struct Collation::Data {
    std::unique_ptr<icu::Collator> collator;     // null without locale data
    std::unique_ptr<icu::BreakIterator> breaks;  // null without locale data
};

namespace {

std::unique_ptr<icu::Collator> makeCollator(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    if (collator != nullptr && succeeded(status)) {
        collator->setAttribute(UCOL_STRENGTH, UCOL_PRIMARY, status);
        collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, status);
        collator->setMaxVariable(UCOL_REORDER_CODE_SYMBOL, status);
    }
    return succeeded(status) ? std::move(collator) : nullptr;
}

std::unique_ptr<icu::BreakIterator> makeBreaks(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaks(icu::BreakIterator::createWordInstance(locale, status));
    return succeeded(status) ? std::move(breaks) : nullptr;
}

std::string sortKey(const icu::Collator& collator, const icu::UnicodeString& text) {
    std::string key(static_cast<std::size_t>(collator.getSortKey(text, nullptr, 0)), '\0');
    collator.getSortKey(text, reinterpret_cast<std::uint8_t*>(key.data()), static_cast<std::int32_t>(key.size()));
    key.resize(key.find_last_not_of('\0') + 1);  // only its end is marked by a zero
    return key;
}

}  // namespace

Collation::Collation(const std::string& language) {
    const icu::Locale locale(language.c_str());
    data_ = std::make_unique<Data>(Data{makeCollator(locale), makeBreaks(locale)});
}

Collation::~Collation() = default;

std::string Collation::key(std::string_view text) const {
    return data_->collator != nullptr ? sortKey(*data_->collator, unicodeFromUtf8(text)) : std::string(text);
}

std::vector<std::string> Collation::words(std::string_view text) const {
    std::vector<std::string> words;
    const icu::UnicodeString whole = unicodeFromUtf8(text);
    if (data_->breaks == nullptr) {
        return {std::string(text)};
    }
    data_->breaks->setText(whole);
    int32_t start = data_->breaks->first();
    for (int32_t end; (end = data_->breaks->next()) != icu::BreakIterator::DONE; start = end) {
        std::string word = utf8FromUnicode(whole.tempSubStringBetween(start, end));
        if (!key(word).empty()) {
            words.push_back(std::move(word));
        }
    }
    return words;
}

}  // namespace lunabrook
