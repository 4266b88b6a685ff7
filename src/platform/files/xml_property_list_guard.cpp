#include <unicode/utf8.h>

#include <cstdint>
#include <utility>

#include "platform/files/private/property_list_guard.h"
#include "platform/files/property_list.h"

namespace lunabrook {

namespace {

bool isUtf8(std::string_view text) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < size;) {
        UChar32 character = 0;
        U8_NEXT(units, i, size, character);
        if (character <= 0) {
            return false;
        }
    }
    return true;
}

// Where the markup that starts at `start` ends, or npos. Comments and marked sections are passed over whole, as the
// parser does, so that tags inside them count neither up nor down.
std::size_t endOfMarkup(std::string_view text, std::size_t start) {
    const std::string_view rest = text.substr(start);
    for (const auto& [opening, closing] :
         {std::pair<std::string_view, std::string_view>{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}) {
        if (rest.starts_with(opening)) {
            const std::size_t end = text.find(closing, start + opening.size());
            return end == std::string_view::npos ? end : end + closing.size();
        }
    }
    const std::size_t end = text.find('>', start);
    return end == std::string_view::npos ? end : end + 1;
}

bool opensContainer(std::string_view markup) {
    return (markup.starts_with("<dict") || markup.starts_with("<array")) && !markup.ends_with("/>");
}

}  // namespace

PropertyListCheck checkXmlPropertyList(std::string_view bytes) {
    if (!isUtf8(bytes)) {
        return {.damage = "is neither a binary property list nor UTF-8 text"};
    }
    int depth = 0;
    std::size_t elements = 0;
    for (std::size_t start = bytes.find('<'); start != std::string_view::npos;) {
        const std::size_t end = endOfMarkup(bytes, start);
        if (end == std::string_view::npos) {
            return {.damage = kCutShort};
        }
        const std::string_view markup = bytes.substr(start, end - start);
        elements += markup[1] != '!' && markup[1] != '?' && markup[1] != '/' ? 1 : 0;
        if (opensContainer(markup)) {
            ++depth;
        } else if (markup.starts_with("</dict") || markup.starts_with("</array")) {
            --depth;
        }
        if (depth > kMaximumPropertyListDepth) {
            return {.damage = kTooDeep};
        }
        if (elements > kMaximumPropertyListValues) {
            return {.damage = kTooMany};
        }
        start = bytes.find('<', end);
    }
    return depth > 0 ? PropertyListCheck{.damage = kCutShort} : PropertyListCheck{};
}

}  // namespace lunabrook
