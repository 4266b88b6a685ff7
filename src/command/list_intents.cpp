#include <algorithm>
#include <array>
#include <iostream>

#include "command/verbs.h"
#include "host/json_output.h"
#include "intents/intent_dispatch.h"
#include "platform/text/display_width.h"
#include "voice/intent_definitions.h"

namespace lunabrook {

namespace {

using Entry = std::array<std::string, 3>;  // short name, title, phrase

Entry rowOf(const IntentDefinition& definition) {
    return {std::string(intentRouteNamed(definition.className)->shortName), definition.title,
            definition.phrases.empty() ? "" : "\"" + definition.phrases.front() + "\""};
}

Json jsonOf(const IntentDefinition::Outcome& outcome) { return {{"code", outcome.code}, {"text", outcome.text}}; }

}  // namespace

ExitStatus listIntentsAsJson(const Device& device) {
    constexpr int kOneLine = -1;
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        std::cout << jsonText({{"name", intentRouteNamed(definition.className)->shortName},
                               {"class", definition.className},
                               {"title", definition.title},
                               {"description", definition.description},
                               {"category", definition.category},
                               {"phrases", definition.phrases},
                               {"success", jsonOf(definition.success)},
                               {"failure", jsonOf(definition.failure)},
                               {"parameters", definition.parameters}},
                              kOneLine);
    }
    return ExitStatus::answered;
}

ExitStatus listIntents(const Device& device, std::ostream& output) {
    std::vector<Entry> rows;
    Entry::size_type constexpr kPhrase = 2;
    std::array<int, kPhrase> widths{};
    for (const IntentDefinition& definition : intentDefinitions(device)) {
        rows.push_back(rowOf(definition));
        for (std::size_t column = 0; column < kPhrase; ++column) {
            widths[column] = std::max(widths[column], displayWidth(rows.back()[column]));
        }
    }
    for (const Entry& row : rows) {
        for (std::size_t column = 0; column < kPhrase; ++column) {
            const int blanks = widths[column] - displayWidth(row[column]) + 2;
            output << row[column] << std::string(static_cast<std::size_t>(blanks), ' ');
        }
        output << row[kPhrase] << "\n";
    }
    return ExitStatus::answered;
}

}  // namespace lunabrook
