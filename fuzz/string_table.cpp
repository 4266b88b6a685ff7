// Bytes -> string table -> each text as a format; a table that is written out again holds the same texts.

#include "platform/text/string_table.h"
#include "fuzz.h"
#include "platform/text/string_format.h"

namespace lunabrook {
namespace {

std::string textLiteral(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        result += (character == '"' || character == '\\' ? "\\" : "") + std::string(1, character);
    }
    return result + "\"";
}

void test(std::string_view bytes) {
    const auto read = stringTableFromBytes(bytes);
    const auto* table = std::get_if<StringTable>(&read);
    if (table == nullptr) {
        const auto& error = std::get<SyntaxError>(read);
        fuzz::require(!error.what.empty() && error.line >= 0, "an error says what is wrong");
        return;
    }
    const Locale locale = Locale::named("de_DE").value();
    std::string written;
    for (const auto& [key, text] : *table) {
        stringWithFormat(text, {"text", 7, 2.5});
        localizedStringWithFormat(locale, text, {"text", 7, 2.5});
        written += textLiteral(key) + " = " + textLiteral(text) + ";\n";
    }
    const auto again = stringTableFromBytes(written);
    const auto* same = std::get_if<StringTable>(&again);
    fuzz::require(same != nullptr && *same == *table, "a table that is written out again holds the same texts");
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
