// Bytes -> list -> bytes -> list: nothing may crash, and what was written is what was read.

#include "platform/files/property_list.h"
#include "fuzz.h"

namespace lunabrook {
namespace {

constexpr std::string_view kSame = "what was written is what was read";

void require(bool isTrue) { fuzz::require(isTrue, kSame); }

// The values of a list written anew, or why they cannot be; comparable where a NaN is not.
std::string written(const Dictionary& dictionary) {
    PropertyList list;
    for (const auto& [key, value] : dictionary) {
        list.set(key, value);
    }
    const auto bytes = list.binary();
    const auto* why = std::get_if<PropertyList::Unwritable>(&bytes);
    return why != nullptr ? why->why : std::get<std::string>(bytes);
}

std::string rewritten(std::string_view bytes) {
    PropertyList list;
    require(!list.merge(bytes));
    const auto result = list.binary();
    require(std::holds_alternative<std::string>(result));
    return std::get<std::string>(result);
}

void test(std::string_view bytes) {
    const auto contents = dictionaryFromPropertyList(bytes);
    if (std::holds_alternative<std::string>(contents)) {
        require(PropertyList().merge(bytes) == std::get<std::string>(contents));
        return;
    }
    const std::string once = rewritten(bytes);
    const std::string twice = rewritten(once);  // the objects may stand in another order when a doubled key went
    require(twice.size() == once.size() && rewritten(twice) == twice);
    const auto again = dictionaryFromPropertyList(once);
    require(std::holds_alternative<Dictionary>(again));
    require(written(std::get<Dictionary>(again)) == written(std::get<Dictionary>(contents)));
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
