#include <absl/time/civil_time.h>
#include <expat.h>
#include <locale.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <vector>

#include "platform/files/private/flat_list.h"
#include "platform/values/base64.h"

namespace lunabrook {

namespace {

// Without those that it starts with.
std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

// The digits that the text starts with, in decimal or after 0x; no digits are zero.
WideInteger integerOf(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    const int base = text.starts_with("0x") || text.starts_with("0X") ? 16 : 10;
    text.remove_prefix(base == 16 ? 2 : 0);
    WideInteger number = 0;
    int digit = 0;
    for (const char& sign : text) {
        if (std::from_chars(&sign, &sign + 1, digit, base).ec != std::errc()) {
            break;
        }
        require(!__builtin_mul_overflow(number, WideInteger{base}, &number) &&
                    !__builtin_add_overflow(number, WideInteger{digit}, &number),
                kNoList);
    }
    return isNegative ? -number : number;
}

double realOf(const std::string& text) {
    static const locale_t kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text.c_str(), nullptr, kPlain);
}

// "2026-06-10T05:00:00Z"; what is missing after the day is zero.
Date dateOf(const std::string& text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    const int fields =
        std::sscanf(text.c_str(), "%5d-%2d-%2d%*c%2d:%2d:%2d", &year, &month, &day, &hour, &minute, &second);
    require(fields >= 3, kNoList);
    const absl::CivilSecond moment(year, month, day, hour, minute, second);
    return dateFromSecondsSince1970(static_cast<double>(moment - absl::CivilSecond(1970)));
}

std::string codeOfScalar(std::string_view name, const std::string& text) {
    if (name == "string" || name == "key") {
        return codeOf(std::string_view(text));
    }
    if (name == "true" || name == "false") {
        return codeOf(name == "true");
    }
    if (name == "integer") {
        return codeOf(integerOf(withoutBlanks(text)));
    }
    if (name == "real") {
        return codeOf(realOf(text));
    }
    if (name == "date") {
        return codeOf(dateOf(text));
    }
    const auto data = name == "data" ? dataFromBase64(text) : std::nullopt;
    require(data.has_value(), kNoList);
    return codeOf(*data);
}

class XmlReader {
public:
    explicit XmlReader(FlatList& list) : list_(list) {
        if (!parser_) {
            throw std::bad_alloc();
        }
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* self, const XML_Char* name, const XML_Char**) { guard(self, &XmlReader::start, name); },
            [](void* self, const XML_Char* name) { guard(self, &XmlReader::end, name); });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
            guard(self, &XmlReader::append, std::string_view(text, static_cast<std::size_t>(length)));
        });
        // A list has no entities of its own: they could ask for any amount of text, or for other files.
        const auto refuse = [](void* self, auto...) {
            XML_StopParser(static_cast<XmlReader*>(self)->parser_.get(), XML_FALSE);
        };
        XML_SetEntityDeclHandler(parser_.get(), refuse);
        XML_SetSkippedEntityHandler(parser_.get(), refuse);
    }

    void read(std::string_view bytes) {
        const XML_Status status = XML_Parse(parser_.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
        if (fault_) {
            std::rethrow_exception(fault_);
        }
        switch (status == XML_STATUS_OK ? XML_ERROR_NONE : XML_GetErrorCode(parser_.get())) {
            case XML_ERROR_NONE:
                return require(!list_.codes().empty(), kNoList);
            case XML_ERROR_NO_MEMORY:
                throw std::bad_alloc();
            case XML_ERROR_NO_ELEMENTS:  // also when the last ones are open
                throw ListDamage{places_.empty() ? kNoList : kCutShort};
            case XML_ERROR_TAG_MISMATCH:
            case XML_ERROR_UNCLOSED_TOKEN:
            case XML_ERROR_UNCLOSED_CDATA_SECTION:
                throw ListDamage{kCutShort};
            default:
                throw ListDamage{kNoList};
        }
    }

private:
    // An open element; of a dictionary what comes next.
    enum class Place { list, array, key, value, scalar };

    // What is thrown goes around the parser, which is not made for it.
    static void guard(void* self, void (XmlReader::*handle)(std::string_view), std::string_view argument) noexcept {
        auto* reader = static_cast<XmlReader*>(self);
        try {
            reader->fault_ ? void() : (reader->*handle)(argument);
        } catch (...) {
            reader->fault_ = std::current_exception();
            XML_StopParser(reader->parser_.get(), XML_FALSE);
        }
    }

    Place place() const { return places_.empty() ? Place::list : places_.back(); }

    void start(std::string_view name) {
        require(place() != Place::scalar, kNoList);
        if (name == "plist") {
            require(places_.empty(), kNoList);
            places_.push_back(Place::list);
        } else if (name == "dict" || name == "array") {
            startValue();
            list_.open(name == "dict" ? ObjectKind::dictionary : ObjectKind::array);
            places_.push_back(name == "dict" ? Place::key : Place::array);
        } else {
            places_.push_back(Place::scalar);
            text_.clear();
        }
    }

    void end(std::string_view name) {
        const Place ended = place();
        places_.pop_back();
        if (ended == Place::scalar) {
            const bool isKey = name == "key" && place() == Place::key;
            isKey ? void(places_.back() = Place::value) : startValue();
            list_.add(codeOfScalar(name, text_));
        } else if (ended != Place::list) {
            if (ended == Place::value) {
                list_.add(codeOfHeader(ObjectKind::nothing));
            }
            list_.close();
        }
    }

    void append(std::string_view text) {
        require(place() == Place::scalar || withoutBlanks(text).empty(), kNoList);
        text_ += text;
    }

    void startValue() {
        require(place() != Place::key && (place() != Place::list || list_.codes().empty()), kNoList);
        if (place() == Place::value) {
            places_.back() = Place::key;
        }
    }

    FlatList& list_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_{XML_ParserCreate("UTF-8"), &XML_ParserFree};
    std::exception_ptr fault_;
    std::vector<Place> places_;
    std::string text_;  // of the scalar
};

}  // namespace

void readXmlPropertyList(std::string_view bytes, FlatList& list) {
    constexpr std::size_t kMostBytes = std::size_t{8} << 20;
    require(bytes.size() <= kMostBytes, "is XML of more than 8 MiB");
    require(utf16Of(bytes) && bytes.find('\0') == std::string_view::npos,
            "is neither a binary property list nor UTF-8 text");
    XmlReader(list).read(withoutBlanks(bytes));
}

}  // namespace lunabrook
