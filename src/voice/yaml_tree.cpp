#include "voice/yaml_tree.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <utility>

namespace lunabrook {

namespace {

using NodeKind = YamlNode::Kind;

constexpr std::size_t kDeepestNode = 32;

int lineOf(const YAML::Mark& mark) { return mark.is_null() ? 0 : mark.line + 1; }

// The parser takes longer for a letter than all else here together, so it is given a file in which what stands between
// double quotes at a line's end is cut short, and the letters are put back afterwards. That they are a value of their
// own is seen when the parser hands out the short text, on its line, once; where it does not, the file is read as it
// is.
constexpr const char* kShort = "~";

struct ShortenedFile {
    std::string yaml;
    std::map<int, std::string_view> values;  // by line, 1 for the first
};

bool standsForItself(std::string_view quoted) {
    return std::none_of(quoted.begin(), quoted.end(), [](char byte) {
        return byte == '"' || byte == '\\' || (static_cast<unsigned char>(byte) < ' ') || byte == '\x7F';
    });
}

ShortenedFile shortened(std::string_view text) {
    ShortenedFile file;
    int number = 1;
    for (std::size_t start = 0; start < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        const std::string_view line = text.substr(start, end - start);
        const std::size_t open = line.find('"');
        const std::size_t close = line.rfind('"');
        if (open < close && close + 2 == line.size() && std::min(line.find('#'), line.find(kShort)) >= open &&
            standsForItself(line.substr(open + 1, close - open - 1))) {
            file.values.emplace(number, line.substr(open + 1, close - open - 1));
            file.yaml.append(line, 0, open + 1).append(kShort).append(line, close);
        } else {
            file.yaml.append(line);
        }
        start = end;
    }
    return file;
}

// Builds the tree from the parser's events; its own tree of shared nodes takes several times as long. Events after the
// first mistake are passed over.
class TreeBuilder : public YAML::EventHandler {
public:
    // What was cut short, by line.
    explicit TreeBuilder(std::map<int, std::string_view> values) : values_(std::move(values)) {}

    // Whether every value that was cut short came back whole.
    bool isWhole() const { return values_.empty(); }

    bool isRefused() const { return !damage_.what.empty(); }

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
    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override { add(NodeKind::text, mark, anchor, ""); }
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t) override { refuse(lineOf(mark), "has an alias"); }
    void OnScalar(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor, const std::string& text) override {
        const auto value = text == kShort ? values_.find(lineOf(mark)) : values_.end();
        if (value == values_.end()) {
            add(NodeKind::text, mark, anchor, text);
        } else {
            add(NodeKind::text, mark, anchor, std::string(value->second));
            values_.erase(value);
        }
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value) override {
        add(NodeKind::list, mark, anchor, "");
    }
    void OnSequenceEnd() override { close(); }
    void OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value) override {
        add(NodeKind::map, mark, anchor, "");
    }
    void OnMapEnd() override { close(); }

private:
    struct Open {
        YamlNode* node = nullptr;
        bool awaitsKey = true;  // of a map
        std::set<std::string> keys;
    };

    void add(NodeKind kind, const YAML::Mark& mark, YAML::anchor_t anchor, const std::string& text) {
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
        if (kind != NodeKind::text) {
            open_.push_back({node, true, {}});
        }
    }

    bool takesKey(NodeKind kind, const YAML::Mark& mark, const std::string& text) {
        if (open_.empty() || open_.back().node->kind != NodeKind::map || !open_.back().awaitsKey) {
            return false;
        }
        if (kind != NodeKind::text || !open_.back().keys.insert(text).second) {
            refuse(lineOf(mark), kind == NodeKind::text ? "has a key twice" : "has a key that is no text");
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

    std::map<int, std::string_view> values_;
    int documents_ = 0;
    YamlNode root_;
    std::vector<Open> open_;
    Damage damage_;
};

std::variant<YamlNode, Damage> treeOf(const std::string& yaml, TreeBuilder builder) {
    try {
        std::istringstream stream(yaml);
        YAML::Parser parser(stream);
        // It hands out documents without end where a comma separates nothing, so the first mistake ends the reading.
        while (!builder.isRefused() && parser.HandleNextDocument(builder)) {
        }
    } catch (const YAML::Exception& error) {
        return Damage{lineOf(error.mark), "is not YAML: " + error.msg};
    }
    return builder.isWhole() || builder.isRefused() ? builder.take() : Damage{0, "has quotes in an unusual place"};
}

}  // namespace

const YamlNode* YamlNode::find(std::string_view key) const {
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found != keys.end() ? &parts[static_cast<std::size_t>(found - keys.begin())] : nullptr;
}

std::variant<YamlNode, Damage> yamlFromText(const std::string& text) {
    ShortenedFile file = shortened(text);
    auto tree = treeOf(file.yaml, TreeBuilder(std::move(file.values)));
    return std::holds_alternative<YamlNode>(tree) ? std::move(tree) : treeOf(text, TreeBuilder({}));
}

}  // namespace lunabrook
