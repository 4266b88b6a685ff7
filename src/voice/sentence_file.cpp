#include "voice/sentence_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "intents/intent_dispatch.h"
#include "voice/template_rules.h"

namespace lunabrook {

namespace {

using NodeKind = YamlNode::Kind;

bool isIntent(const std::string& className) {
    const auto& routes = intentRoutes();
    return std::any_of(routes.begin(), routes.end(),
                       [&className](const IntentRoute& route) { return className == route.className; });
}

// Reads one file; after the first mistake everything returns at once.
class Reader {
public:
    std::variant<SentenceFile, Damage> read(const YamlNode& root) {
        textAt(root, "language");
        readRules(root);
        if (damage_.what.empty()) {
            readIntents(root);
        }
        readSkipWords(root);
        readSettings(root);
        if (damage_.what.empty()) {
            return std::move(file_);
        }
        return damage_;
    }

private:
    void readRules(const YamlNode& root) {
        const YamlNode* rules = optionalAt(root, "expansion_rules", NodeKind::map);
        for (std::size_t i = 0; rules != nullptr && i < rules->parts.size(); ++i) {
            file_.rules.push_back({rules->keys[i], templateFrom(rules->parts[i])});
        }
        resolver_.emplace(file_.rules);
        if (const RuleResolver::Mistake mistake = resolver_->resolveRules(); !mistake.what.empty()) {
            refuse(rules->parts[mistake.rule].line, mistake.what);
        }
    }

    void readIntents(const YamlNode& root) {
        const YamlNode* intents = requiredAt(root, "intents", NodeKind::map);
        for (std::size_t i = 0; intents != nullptr && i < intents->parts.size(); ++i) {
            const YamlNode& definition = intents->parts[i];
            SentenceFile::Intent& intent = file_.intents.emplace_back();
            intent.className = intents->keys[i];
            if (!isIntent(intent.className)) {
                refuse(definition.line, "has sentences for \"" + intent.className + "\", which is no intent");
            }
            const YamlNode* data = requiredAt(definition, "data", NodeKind::list);
            for (std::size_t entry = 0; data != nullptr && entry < data->parts.size(); ++entry) {
                intent.entries.push_back(entryFrom(data->parts[entry]));
            }
        }
    }

    SentenceFile::Entry entryFrom(const YamlNode& node) {
        SentenceFile::Entry entry;
        const YamlNode* sentences = requiredAt(node, "sentences", NodeKind::list);
        if (sentences != nullptr && sentences->parts.empty()) {
            refuse(sentences->line, "has an entry without sentences");
        }
        // Whatever else stands in an entry narrows when its sentences count.
        for (const std::string& key : node.keys) {
            if (key != "sentences") {
                refuse(node.line, "has \"" + key + "\" beside sentences, which is not known here");
            }
        }
        for (std::size_t i = 0; sentences != nullptr && i < sentences->parts.size() && damage_.what.empty(); ++i) {
            const YamlNode& sentence = sentences->parts[i];
            SentenceTemplate& read = entry.emplace_back(templateFrom(sentence));
            if (std::string mistake = resolver_->resolve(read); !mistake.empty()) {
                refuse(sentence.line, std::move(mistake));
            } else if ((unfolded_ += resolver_->unfoldedSize(read)) > kMostUnfolded) {
                refuse(sentence.line, "unfolds into too many pieces");
            }
        }
        return entry;
    }

    void readSkipWords(const YamlNode& root) {
        const YamlNode* words = optionalAt(root, "skip_words", NodeKind::list);
        for (std::size_t i = 0; words != nullptr && i < words->parts.size(); ++i) {
            file_.skipWords.push_back(textOf(words->parts[i]));
        }
    }

    void readSettings(const YamlNode& root) {
        const YamlNode* settings = optionalAt(root, "settings", NodeKind::map);
        const YamlNode* ignored = settings != nullptr ? settings->find("ignore_whitespace") : nullptr;
        if (ignored != nullptr) {
            const std::string& answer = textOf(*ignored);
            file_.ignoresBlanks = answer == "true";
            if (answer != "true" && answer != "false") {
                refuse(ignored->line, "has an ignore_whitespace that is neither true nor false");
            }
        }
    }

    SentenceTemplate templateFrom(const YamlNode& node) {
        auto read = sentenceTemplateFromText(textOf(node));
        if (const auto* mistake = std::get_if<std::string>(&read)) {
            refuse(node.line, *mistake);
            return {};
        }
        return std::get<SentenceTemplate>(std::move(read));
    }

    const YamlNode* optionalAt(const YamlNode& map, const char* key, NodeKind kind) {
        const YamlNode* found = map.find(key);
        if (found != nullptr && found->kind != kind) {
            refuse(found->line, std::string("has something else than a ") + (kind == NodeKind::map ? "map" : "list") +
                                    " under \"" + key + "\"");
            return nullptr;
        }
        return found;
    }

    const YamlNode* requiredAt(const YamlNode& map, const char* key, NodeKind kind) {
        if (map.find(key) == nullptr) {
            refuse(map.line, std::string("lacks \"") + key + "\"");
        }
        return optionalAt(map, key, kind);
    }

    void textAt(const YamlNode& map, const char* key) {
        const YamlNode* found = map.find(key);
        if (found == nullptr || found->kind != NodeKind::text) {
            refuse(map.line, std::string("lacks \"") + key + "\"");
        }
    }

    const std::string& textOf(const YamlNode& node) {
        if (node.kind != NodeKind::text || node.text.empty()) {
            refuse(node.line, "has no text where one is due");
        }
        return node.text;
    }

    void refuse(int line, std::string what) {
        if (damage_.what.empty()) {
            damage_ = {line, std::move(what)};
        }
    }

    SentenceFile file_;
    std::optional<RuleResolver> resolver_;
    std::size_t unfolded_ = 0;
    Damage damage_;
};

}  // namespace

std::variant<SentenceFile, Damage> sentenceFileFromText(const std::string& yaml) {
    auto tree = yamlFromText(yaml);
    if (const auto* damage = std::get_if<Damage>(&tree)) {
        return *damage;
    }
    return Reader().read(std::get<YamlNode>(tree));
}

}  // namespace lunabrook
