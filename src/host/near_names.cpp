#include "host/near_names.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/text_case.h"

namespace lunabrook {

namespace {

// Levenshtein's distance: letters to insert, drop or replace.
std::size_t editDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string> nearNames(std::string_view mistyped, const std::vector<std::string>& names) {
    constexpr std::size_t kMost = 3;
    constexpr std::size_t kLettersPerSlip = 3;
    const std::string typed = lowercaseString(mistyped);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const std::string known = lowercaseString(name);
        const std::size_t distance = editDistance(typed, known);
        const bool isBeginning = typed.size() >= kLettersPerSlip && known.find(typed) != std::string::npos;
        if (isBeginning || distance <= std::max(known.size(), typed.size()) / kLettersPerSlip) {
            near.emplace_back(distance, name);
        }
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (auto& [distance, name] : near) {
        if (nearest.size() < kMost) {
            nearest.push_back(std::move(name));
        }
    }
    return nearest;
}

std::string suggestion(std::string_view mistyped, const std::vector<std::string>& names) {
    const std::vector<std::string> near = nearNames(mistyped, names);
    if (near.empty()) {
        return {};
    }
    std::string list = near.front();
    for (std::size_t i = 1; i < near.size(); ++i) {
        list += (i + 1 == near.size() ? " or " : ", ") + near[i];
    }
    return "; did you mean " + list + "?";
}

}  // namespace lunabrook
