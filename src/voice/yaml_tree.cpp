#include "voice/yaml_tree.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <utility>

namespace lunabrook {

namespace {

using Kind = YamlNode::Kind;

constexpr std::size_t kDeepestNode = 32;

int lineOf(const YAML::Mark& mark) { return mark.is_null() ? 0 : mark.line + 1; }

// Builds the tree from the parser's events; its own tree of shared nodes takes several times as long. Events after the
// first mistake are passed over.
class TreeBuilder : public YAML::EventHandler {
public:
    std::variant<YamlNode, Damage> take() {
        if (damage_.what.empty()) {
            return std::move(root_);
        }
        return damage_;
    }
    void refuse(int line, const char* what) {
        if (damage_.what.empty()) {
            damage_ = {line, what};
        }
    }

    void OnDocumentStart(const YAML::Mark& mark) override {
        if (++documents_ > 1) {
            refuse(lineOf(mark), "has a second document");
        }
    }
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override { add(Kind::text, mark, anchor, ""); }
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t) override { refuse(lineOf(mark), "has an alias"); }
    void OnScalar(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor, const std::string& text) override {
        add(Kind::text, mark, anchor, text);
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value) override {
        add(Kind::list, mark, anchor, "");
    }
    void OnSequenceEnd() override { close(); }
    void OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value) override {
        add(Kind::map, mark, anchor, "");
    }
    void OnMapEnd() override { close(); }

private:
    struct Open {
        YamlNode* node = nullptr;
        bool awaitsKey = true;  // of a map
        std::set<std::string> keys;
    };

    void add(Kind kind, const YAML::Mark& mark, YAML::anchor_t anchor, const std::string& text) {
        if (anchor != 0) {
            refuse(lineOf(mark), "has an anchor");
        }
        if (open_.size() > kDeepestNode) {
            refuse(lineOf(mark), "is nested deeper than 32 levels");
        }
        if (!damage_.what.empty() || takesKey(kind, mark, text)) {
            return;
        }
        YamlNode* node = &root_;
        if (!open_.empty()) {
            open_.back().awaitsKey = true;
            node = &open_.back().node->parts.emplace_back();
        }
        node->kind = kind;
        node->line = lineOf(mark);
        node->text = text;
        if (kind != Kind::text) {
            open_.push_back({node, true, {}});
        }
    }

    bool takesKey(Kind kind, const YAML::Mark& mark, const std::string& text) {
        if (open_.empty() || open_.back().node->kind != Kind::map || !open_.back().awaitsKey) {
            return false;
        }
        if (kind != Kind::text || !open_.back().keys.insert(text).second) {
            refuse(lineOf(mark), kind == Kind::text ? "has a key twice" : "has a key that is no text");
        }
        open_.back().awaitsKey = false;
        open_.back().node->keys.push_back(text);
        return true;
    }

    void close() {
        if (damage_.what.empty()) {
            open_.pop_back();
        }
    }

    int documents_ = 0;
    YamlNode root_;
    std::vector<Open> open_;
    Damage damage_;
};

}  // namespace

const YamlNode* YamlNode::find(std::string_view key) const {
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found != keys.end() ? &parts[static_cast<std::size_t>(found - keys.begin())] : nullptr;
}

std::variant<YamlNode, Damage> yamlFromText(const std::string& text) {
    try {
        std::istringstream stream(text);
        YAML::Parser parser(stream);
        TreeBuilder builder;
        while (parser.HandleNextDocument(builder)) {
        }
        return builder.take();
    } catch (const YAML::Exception& error) {
        return Damage{lineOf(error.mark), "is not YAML: " + error.msg};
    }
}

}  // namespace lunabrook
