// The floor under `lunabrook ask sleep-rings`: a program that reads the same store with a library for it and formats
// one date. Compared as whole processes by script/bench.
//
//   bench_minimal_program FILE.plist LOCALE

#include <plist/plist.h>
#include <unicode/smpdtfmt.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    std::ifstream stream(argv[1], std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);

    UErrorCode status = U_ZERO_ERROR;
    const icu::SimpleDateFormat format(u"HH:mm", icu::Locale(argv[2]), status);
    icu::UnicodeString text;
    constexpr double kMillisecondsPerSecond = 1000;
    format.format(static_cast<UDate>(std::time(nullptr)) * kMillisecondsPerSecond, text);
    std::string utf8;
    std::printf("%s %u\n", text.toUTF8String(utf8).c_str(), root != nullptr ? plist_dict_get_size(root) : 0);
    const bool isRead = root != nullptr;
    plist_free(root);
    return isRead && U_SUCCESS(status) ? 0 : 1;
}
