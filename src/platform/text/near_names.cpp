#include "platform/text/near_names.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/text/text_case.h"

namespace lunabrook {

std::size_t editDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> above2;
    std::vector<std::size_t> above(right.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::vector<std::size_t> row(right.size() + 1, i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = above[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, above[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                row[j] = std::min(row[j], above2[j - 2] + 1);
            }
        }
        above2 = std::exchange(above, std::move(row));
    }
    return above.back();
}

std::vector<std::string> nearNames(std::string_view mistyped, const std::vector<KnownName>& names) {
    constexpr std::size_t kMost = 3;
    constexpr std::size_t kLettersPerSlip = 3;
    const std::string typed = lowercaseString(mistyped);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const KnownName& name : names) {
        const std::string known = lowercaseString(name.typed);
        if (typed.size() > kLettersPerSlip * known.size()) {
            continue;  // a sentence, or a megabyte
        }
        const std::size_t distance = editDistance(typed, known);
        const bool isBeginning = typed.size() >= kLettersPerSlip && known.find(typed) != std::string::npos;
        if (isBeginning || distance <= std::max(known.size(), typed.size()) / kLettersPerSlip) {
            near.emplace_back(distance, name.shown);
        }
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (auto& [distance, name] : near) {
        if (nearest.size() < kMost && std::find(nearest.begin(), nearest.end(), name) == nearest.end()) {
            nearest.push_back(std::move(name));
        }
    }
    return nearest;
}

std::string listed(const std::vector<std::string>& names, std::string_view beforeTheLast) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list.append(i == 0 ? "" : i + 1 == names.size() ? beforeTheLast : ", ").append(names[i]);
    }
    return list;
}

std::string suggestion(std::string_view mistyped, const std::vector<KnownName>& names) {
    const std::vector<std::string> near = nearNames(mistyped, names);
    if (near.empty()) {
        return {};
    }
    return "; did you mean " + listed(near, " or ") + "?";
}

std::string nameKey(std::string_view name) {
    std::string key(name);
    for (char& letter : key) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        } else if (letter == ' ' || letter == '_') {
            letter = '-';
        }
    }
    return key;
}

}  // namespace lunabrook
