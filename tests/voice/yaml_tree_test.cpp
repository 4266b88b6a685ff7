// YAML as a tree, and that quotes in unusual places mean what they mean.

#include "voice/yaml_tree.h"

#include <gtest/gtest.h>

namespace lunabrook {
namespace {

// Lists in brackets, maps in braces: "{a: [b|c]}".
std::string shown(const YamlNode& node) {
    if (node.kind == YamlNode::Kind::text) {
        return node.text;
    }
    std::string parts;
    for (std::size_t i = 0; i < node.parts.size(); ++i) {
        parts += (i == 0 ? "" : "|") + (i < node.keys.size() ? node.keys[i] + ": " : "") + shown(node.parts[i]);
    }
    return node.kind == YamlNode::Kind::map ? "{" + parts + "}" : "[" + parts + "]";
}

TEST(YamlTree, ReadsTextsAsTheyAreWritten) {
    const std::pair<const char*, const char*> rows[] = {
        {"a: \"b\"\nc:\n  - \"d e\"\n  - 'f'\n  - g \"h\"\n", "{a: b|c: [d e|f|g \"h\"]}"},
        {"- \"a\" # \"b\"\n- \"c # d\"\n# \"e\"\n- \"\"\n", "[a|c # d|]"},
        {"- |-\n  \"a\"\n- >-\n  \"b\"\n  \"c\"\n- \"d\"\n", "[\"a\"|\"b\" \"c\"|d]"},
        {"- 'a\n  \"b\"\n  c'\n- \"d\"\n", "[a \"b\" c|d]"},
        {"- \"a\n  b\"\n- \"c\\\"d\"\n- \"\\u0065\"\n", "[a b|c\"d|e]"},
        {"'~': \"a\"\nb: [~, \"c\"]\n? \"d\"\n: \"e\"\n", "{~: a|b: [|c]|d: e}"},
        {"- \"\xC3\xA4\"\r\n- \"b\"\n- \"c\"", "[\xC3\xA4|b|c]"},
    };
    for (const auto& [yaml, tree] : rows) {
        const auto read = yamlFromText(yaml);
        ASSERT_TRUE(std::holds_alternative<YamlNode>(read)) << yaml << std::get<Damage>(read).what;
        EXPECT_EQ(shown(std::get<YamlNode>(read)), tree) << yaml;
    }
}

TEST(YamlTree, KnowsTheLines) {
    const auto read = yamlFromText("# a\nb:\n  - \"c\"\n  - d\n");
    const YamlNode* list = std::get<YamlNode>(read).find("b");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(std::get<YamlNode>(read).find("c"), nullptr);
    EXPECT_EQ(list->parts[0].line, 3);
    EXPECT_EQ(list->parts[1].line, 4);
}

}  // namespace
}  // namespace lunabrook
