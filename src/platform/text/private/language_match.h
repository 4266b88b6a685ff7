// Which of a bundle's languages serves a person best: ICU's locale matcher, made only when it can matter.

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lunabrook {

// One of `languages` (sorted), or nil when no preferred one is near any of them. All are plain language tags;
// `preferred` is most wanted first.
std::optional<std::string> bestLanguage(const std::vector<std::string>& languages,
                                        const std::vector<std::string>& preferred);

}  // namespace lunabrook
