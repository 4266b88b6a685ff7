// A random format with random arguments: nothing is read out of bounds, and text without a % stays as it is.

#include "platform/text/string_format.h"
#include "fuzz.h"

namespace lunabrook {
namespace {

FormatArgument anyArgument(FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            return input.ConsumeIntegral<std::int64_t>();
        case 1:
            return input.ConsumeFloatingPoint<double>();
        case 2:
            return input.ConsumeFloatingPointInRange(-1e6, 1e6);
        default:
            return input.ConsumeRandomLengthString(16);
    }
}

void test(std::string_view bytes) {
    FuzzedDataProvider input(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    const Locale& locale = fuzz::anyLocale(input);
    const FormatArgument first = anyArgument(input);
    const FormatArgument second = anyArgument(input);
    const FormatArgument third = anyArgument(input);
    const std::string format = input.ConsumeRemainingBytesAsString();
    for (const std::string& text : {stringWithFormat(format, {}), localizedStringWithFormat(locale, format, {}),
                                    stringWithFormat(format, {first, second, third}),
                                    localizedStringWithFormat(locale, format, {first, second, third})}) {
        fuzz::require(format.find('%') != std::string::npos || text == format, "text without a % stays as it is");
    }
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
