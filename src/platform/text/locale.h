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

    struct Data;  // known to the platform's own sources alone
    Data& data() const { return *data_; }

private:
    explicit Locale(std::shared_ptr<Data> data) : data_(std::move(data)) {}

    std::shared_ptr<Data> data_;
};

}  // namespace lunabrook
