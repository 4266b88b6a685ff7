#include <algorithm>
#include <array>
#include <iostream>

#include "command/verbs.h"
#include "intents/intent_dispatch.h"
#include "platform/text/display_width.h"
#include "voice/intent_definitions.h"

namespace lunabrook {

namespace {

using Row = std::array<std::string, 3>;  // short name, title, phrase

Row rowOf(const IntentDefinition& definition) {
    return {std::string(intentRouteNamed(definition.className)->shortName), definition.title,
            definition.phrases.empty() ? "" : "\"" + definition.phrases.front() + "\""};
}

}  // namespace

ExitStatus listIntents(const Device& device) {
    std::vector<Row> rows;
    Row::size_type constexpr kPhrase = 2;
    std::array<int, kPhrase> widths{};
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        rows.push_back(rowOf(definition));
        for (std::size_t column = 0; column < kPhrase; ++column) {
            widths[column] = std::max(widths[column], displayWidth(rows.back()[column]));
        }
    }
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < kPhrase; ++column) {
            const int blanks = widths[column] - displayWidth(row[column]) + 2;
            std::cout << row[column] << std::string(static_cast<std::size_t>(blanks), ' ');
        }
        std::cout << row[kPhrase] << "\n";
    }
    return ExitStatus::answered;
}

}  // namespace lunabrook
