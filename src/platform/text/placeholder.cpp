#include "platform/text/private/placeholder.h"

#include <algorithm>

namespace lunabrook {

namespace {

constexpr int kMaximumWidth = 512;  // also of a precision

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::size_t index() const { return index_; }

    bool take(char wanted) {
        const bool isThere = index_ < text_.size() && text_[index_] == wanted;
        index_ += isThere ? 1 : 0;
        return isThere;
    }

    char takeAny() { return index_ < text_.size() ? text_[index_++] : '\0'; }

    // Saturates: a number that is too large stays too large.
    std::optional<int> takeNumber() {
        constexpr int kTooLarge = 1'000'000;
        const std::size_t start = index_;
        int number = 0;
        while (index_ < text_.size() && text_[index_] >= '0' && text_[index_] <= '9') {
            number = std::min(number * 10 + (text_[index_++] - '0'), kTooLarge);
        }
        return index_ > start ? std::optional(number) : std::nullopt;
    }

    std::optional<std::size_t> takePosition() {
        const std::size_t start = index_;
        const std::optional<int> number = takeNumber();
        if (number && take('$')) {
            return static_cast<std::size_t>(*number);
        }
        index_ = start;  // the digits are flags and a width
        return std::nullopt;
    }

    void takeFlags(Placeholder& placeholder) {
        for (bool isFlag = true; isFlag;) {
            const bool left = take('-'), plus = take('+'), blank = take(' '), zero = take('0');
            placeholder.isLeftAligned |= left;
            placeholder.showsPlus |= plus;
            placeholder.showsBlank |= blank;
            placeholder.fillsWithZeros |= zero;
            isFlag = left || plus || blank || zero;
        }
    }

private:
    std::string_view text_;
    std::size_t index_ = 0;
};

}  // namespace

std::optional<Placeholder> placeholderAtStart(std::string_view text) {
    Reader reader(text);
    Placeholder placeholder;
    placeholder.position = reader.takePosition();
    reader.takeFlags(placeholder);
    const int width = reader.takeNumber().value_or(0);
    placeholder.width = static_cast<std::size_t>(width);
    if (reader.take('.')) {
        placeholder.precision = reader.takeNumber().value_or(0);
    }
    placeholder.isLong = reader.take('l');
    const bool isVeryLong = placeholder.isLong && reader.take('l');
    const char conversion = reader.takeAny();
    const std::string_view known = isVeryLong ? "diu" : placeholder.isLong ? "diuf" : "@diuf%";
    if (conversion == '\0' || known.find(conversion) == std::string_view::npos || width > kMaximumWidth ||
        placeholder.precision > kMaximumWidth) {
        return std::nullopt;
    }
    placeholder.conversion = conversion == 'i' ? 'd' : conversion;
    placeholder.length = reader.index();
    return placeholder;
}

}  // namespace lunabrook
