// Bytes -> store -> all requests and intents: the made-up week with some of its values replaced, or the bytes as they
// are. Nothing may crash, every answer is a sentence, and a store that cannot be read stays as it is.

#include "command/demo_week.h"
#include "fuzz.h"
#include "intents/intent_dispatch.h"
#include "intents/intent_handler.h"
#include "metrics/group_metrics.h"
#include "metrics/store_keys.h"
#include "platform/files/property_list.h"

namespace lunabrook {
namespace {

using fuzz::require;

Value anyValue(FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return input.ConsumeBool();
        case 1:
            return input.ConsumeIntegral<std::int64_t>();
        case 2:
            return input.ConsumeFloatingPoint<double>();
        case 3:
            return input.ConsumeFloatingPointInRange(-100.0, 100000.0);
        case 4:
            return fuzz::anyDate(input);
        case 5:
            return Dictionary{};
        case 6:
            return std::vector<Value>{input.ConsumeRandomLengthString(8)};
        default:
            return input.ConsumeRandomLengthString(24);
    }
}

// Replaces or removes an entry, or looks for one in a dictionary inside.
void changeEntry(Dictionary& dictionary, FuzzedDataProvider& input) {
    if (dictionary.empty()) {
        return;
    }
    const auto at = std::next(dictionary.begin(), input.ConsumeIntegralInRange<std::ptrdiff_t>(
                                                      0, static_cast<std::ptrdiff_t>(dictionary.size()) - 1));
    if (const Dictionary* inner = at->second.dictionary();
        inner != nullptr && input.ConsumeProbability<float>() < 0.9F) {
        Dictionary changed = *inner;
        changeEntry(changed, input);
        at->second = std::move(changed);
    } else if (input.ConsumeProbability<float>() < 0.2F) {
        dictionary.erase(at);
    } else {
        at->second = anyValue(input);
    }
}

std::string bytesOf(const Dictionary& dictionary) {
    PropertyList list;
    for (const auto& [key, value] : dictionary) {
        list.set(key, value);
    }
    const auto bytes = list.binary();
    return std::holds_alternative<std::string>(bytes) ? std::get<std::string>(bytes) : "";
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void test(std::string_view bytes) {
    const bool isList = bytes.starts_with("bplist") || bytes.starts_with('<');
    FuzzedDataProvider input(reinterpret_cast<const std::uint8_t*>(bytes.data()), isList ? 0 : bytes.size());
    Date now = dateFromSecondsSince1970(1781073000);  // 2026-06-10T08:30+02:00
    const Device device({.clock = [&now] { return now; },
                         .timeZone = isList ? TimeZone::named("Europe/Berlin").value() : fuzz::anyZone(input),
                         .locale = fuzz::anyLocale(input),
                         .preferredLanguages = {"en"},
                         .bundle = fuzz::folder() / "bundle",
                         .preferences = fuzz::folder()});
    const std::filesystem::path file = fuzz::folder() / (std::string(kGroupSuite) + ".plist");
    std::string store(bytes);
    if (!isList) {
        Dictionary week = demoWeek(device);
        const int changes = input.ConsumeIntegralInRange(0, 6);
        for (int change = 0; change < changes; ++change) {
            changeEntry(week, input);
        }
        store = bytesOf(week);
    }
    const bool isReadable = std::holds_alternative<Dictionary>(dictionaryFromPropertyList(store));
    constexpr std::size_t kDamagedOnes = 16;
    if (!isReadable && (store.empty() || store.size() % kDamagedOnes != 0)) {
        return;  // a writer in place may be at it, so each of these is waited for
    }
    fuzz::writeFile(file, store);

    GroupMetrics metrics(device);
    for (auto request : {&GroupMetrics::requestQuality, &GroupMetrics::requestSpO2, &GroupMetrics::requestRespRate,
                         &GroupMetrics::requestWristTemp, &GroupMetrics::requestReadiness, &GroupMetrics::requestOctane,
                         &GroupMetrics::requestConsistencyDict, &GroupMetrics::requestSleepBank}) {
        const auto result = (metrics.*request)();
        require(isReadable || !result, "a damaged store reads as empty");
    }
    IntentHandler handler(device);
    for (const IntentRoute& route : intentRoutes()) {
        const IntentReply reply = route.ask(handler);
        require(reply.response && !reply.response->empty(), "every answer is a sentence");
        if (input.remaining_bytes() > 0) {
            now = fuzz::anyDate(input);  // the clock may jump at any time
        }
    }
    if (isReadable) {
        require(std::holds_alternative<Dictionary>(dictionaryFromPropertyList(readFile(file))), "a store stays one");
    } else {
        require(readFile(file) == store, "a damaged store stays as it is");
    }
}

}  // namespace
}  // namespace lunabrook

LUNABROOK_FUZZ_TARGET(lunabrook::test)
