// A language's sentences, read from <language>.lproj/Sentences.yaml:
//
//   language: "en"
//   intents:
//     ReadinessIntent:
//       data:
//         - sentences:
//             - "How ready am I today?"
//             - "<tell_me> my readiness [(score|rating)]"
//   expansion_rules:
//     tell_me: "(tell|give|show) me"
//   skip_words:
//     - "please"
//   settings:
//     ignore_whitespace: false

#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "voice/sentence_template.h"
#include "voice/yaml_tree.h"

namespace lunabrook {

struct SentenceFile {
    struct Rule {
        std::string name;
        SentenceTemplate body;
    };
    using Entry = std::vector<SentenceTemplate>;  // never empty; the first one is the natural example
    struct Intent {
        std::string className;  // always one of the nine
        std::vector<Entry> entries;
    };

    std::vector<Intent> intents;
    std::vector<Rule> rules;  // none uses itself, by whatever way round
    std::vector<std::string> skipWords;
    bool ignoresBlanks = false;
};

// All or nothing: one wrong template damages the file, so that nobody wonders where half of the sentences are. Wrong
// are templates that unfold into more than 200,000 pieces altogether, too.
std::variant<SentenceFile, Damage> sentenceFileFromText(const std::string& yaml);

}  // namespace lunabrook
