// A small YAML file as a tree of texts, lists and maps, each with its line.
//
// Aliases and anchors are refused: a few of them unfold into gigabytes. So are two values under one key and a second
// document. Tags mean nothing; every value is a text as it is written.

#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "voice/resource_file.h"

namespace lunabrook {

struct YamlNode {
    enum class Kind { text, list, map };

    // Of a map, the value under the key; null without one.
    const YamlNode* find(std::string_view key) const;

    Kind kind = Kind::text;
    int line = 0;  // 1 for the first
    std::string text;
    std::vector<YamlNode> parts;    // of a list or map, in the file's order
    std::vector<std::string> keys;  // of a map, one for each part
};

// Damage: "is not YAML: end of map not found".
std::variant<YamlNode, Damage> yamlFromText(const std::string& text);

}  // namespace lunabrook
