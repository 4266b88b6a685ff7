#include <expat.h>
#include <locale.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "platform/files/private/object_code.h"
#include "platform/values/base64.h"

namespace lunabrook {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The digits that the text starts with, in decimal or after 0x; no digits are zero.
WideInteger integerOf(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    const int base = text.starts_with("0x") || text.starts_with("0X") ? 16 : 10;
    text.remove_prefix(base == 16 ? 2 : 0);
    WideInteger number = 0;
    for (const char& sign : text) {
        int digit = 0;
        if (std::from_chars(&sign, &sign + 1, digit, base).ec != std::errc()) {
            break;
        }
        if (__builtin_mul_overflow(number, WideInteger{base}, &number) ||
            __builtin_add_overflow(number, WideInteger{digit}, &number)) {
            throw ListDamage{kNoList};
        }
    }
    return isNegative ? -number : number;
}

double realOf(const std::string& text) {
    static const locale_t kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text.c_str(), nullptr, kPlain);
}

// "2026-06-10T05:00:00Z"; what is missing after the day is zero.
Date dateOf(std::string_view text) {
    int fields[6] = {};  // year to second
    int count = 0;
    const char* const end = text.data() + text.size();
    for (const char* start = text.data(); count < 6 && start < end; ++count) {
        const auto read = std::from_chars(start, end, fields[count]);
        if (read.ec != std::errc()) {
            break;
        }
        start = read.ptr + 1;  // behind a separator
    }
    const auto& [year, month, day, hour, minute, second] = fields;
    constexpr int kFarthestYear = 30'000;  // of the calendar's range
    if (count < 3 || std::abs(year) > kFarthestYear || month < 1 || month > 12) {
        throw ListDamage{kNoList};
    }
    const std::chrono::sys_days start = std::chrono::year(year) / month / 1;
    const double days = static_cast<double>(start.time_since_epoch().count()) + (day - 1.0);
    return dateFromSecondsSince1970(days * kDaySeconds + hour * 3600.0 + minute * 60.0 + second);
}

class XmlReader {
public:
    XmlReader(std::string_view bytes, ListSink& sink)
        : bytes_(bytes), sink_(sink), parser_(XML_ParserCreate("UTF-8"), &XML_ParserFree) {  // whatever it declares
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
        XML_SetEntityDeclHandler(parser_.get(),
                                 [](void* self, auto...) { guard(self, &XmlReader::refuse, std::string_view()); });
        XML_SetSkippedEntityHandler(parser_.get(),
                                    [](void* self, auto...) { guard(self, &XmlReader::refuse, std::string_view()); });
    }

    ObjectKind read() {
        const XML_Status status = XML_Parse(parser_.get(), bytes_.data(), static_cast<int>(bytes_.size()), XML_TRUE);
        if (fault_) {
            std::rethrow_exception(fault_);
        }
        switch (status == XML_STATUS_OK ? XML_ERROR_NONE : XML_GetErrorCode(parser_.get())) {
            case XML_ERROR_NONE:
                return root_ ? *root_ : throw ListDamage{kNoList};
            case XML_ERROR_NO_MEMORY:
                throw std::bad_alloc();
            case XML_ERROR_NO_ELEMENTS:  // also when the last ones are open
                throw ListDamage{depth_ > 0 ? kCutShort : kNoList};
            case XML_ERROR_TAG_MISMATCH:
            case XML_ERROR_UNCLOSED_TOKEN:
            case XML_ERROR_UNCLOSED_CDATA_SECTION:
                throw ListDamage{kCutShort};
            default:
                throw ListDamage{kNoList};
        }
    }

private:
    // A container that is open, and of a dictionary the key whose value comes next.
    struct Open {
        ObjectKind kind;
        std::optional<std::string> key;
    };

    // What is thrown goes around the parser, which is not made for it.
    static void guard(void* self, void (XmlReader::*handle)(std::string_view), std::string_view argument) noexcept {
        auto* reader = static_cast<XmlReader*>(self);
        if (reader->fault_) {
            return;
        }
        try {
            (reader->*handle)(argument);
        } catch (...) {
            reader->fault_ = std::current_exception();
            XML_StopParser(reader->parser_.get(), XML_FALSE);
        }
    }

    [[noreturn]] void refuse(std::string_view) { throw ListDamage{kNoList}; }

    void start(std::string_view name) {
        if (isInScalar_ || (name == "plist" && depth_ > 0)) {
            refuse(name);
        }
        ++depth_;
        if (name == "dict" || name == "array") {
            const ObjectKind kind = name == "dict" ? ObjectKind::dictionary : ObjectKind::array;
            sendKey(kind);
            sink_.open(kind);
            open_.push_back({kind, std::nullopt});
        } else if (name != "plist") {
            isInScalar_ = true;
            text_.clear();
        }
    }

    void end(std::string_view name) {
        --depth_;
        if (!isInScalar_) {
            if (name != "plist") {
                sink_.close();
                open_.pop_back();
            }
            return;
        }
        isInScalar_ = false;
        if (name == "key" && !open_.empty() && open_.back().kind == ObjectKind::dictionary && !open_.back().key) {
            open_.back().key = text_;
            return;
        }
        const std::string code = codeOfScalar(name);
        sendKey(objectHeader(code).kind);
        sink_.add(code);
    }

    void append(std::string_view text) {
        if (isInScalar_) {
            text_ += text;
        } else if (!trimmed(text).empty()) {
            refuse(text);
        }
    }

    // Before a value of this kind.
    void sendKey(ObjectKind kind) {
        if (open_.empty()) {
            root_ ? refuse({}) : void(root_ = kind);
        } else if (open_.back().kind == ObjectKind::dictionary) {
            if (!open_.back().key) {
                refuse({});
            }
            sink_.add(codeOf(*std::exchange(open_.back().key, std::nullopt)));
        }
    }

    std::string codeOfScalar(std::string_view name) {
        if (name == "string" || name == "key") {
            return codeOf(text_);
        }
        if (name == "true" || name == "false") {
            return codeOf(name == "true");
        }
        if (name == "integer") {
            return codeOf(integerOf(trimmed(text_)));
        }
        if (name == "real") {
            return codeOf(realOf(text_));
        }
        if (name == "date") {
            return codeOf(dateOf(trimmed(text_)));
        }
        const auto data = name == "data" ? dataFromBase64(text_) : std::nullopt;
        return data ? codeOf(*data) : throw ListDamage{kNoList};
    }

    std::string_view bytes_;
    ListSink& sink_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_;
    std::exception_ptr fault_;
    int depth_ = 0;  // of elements
    std::vector<Open> open_;
    std::optional<ObjectKind> root_;
    bool isInScalar_ = false;
    std::string text_;  // of the scalar
};

}  // namespace

ObjectKind readXmlPropertyList(std::string_view bytes, ListSink& sink) {
    constexpr std::size_t kMostBytes = std::size_t{8} << 20;
    if (bytes.size() > kMostBytes) {
        throw ListDamage{"is XML of more than 8 MiB"};
    }
    if (!isUtf8(bytes) || bytes.find('\0') != std::string_view::npos) {
        throw ListDamage{"is neither a binary property list nor UTF-8 text"};
    }
    bytes.remove_prefix(std::min(bytes.find_first_not_of(kBlanks), bytes.size()));
    return XmlReader(bytes, sink).read();
}

}  // namespace lunabrook
