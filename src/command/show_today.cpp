#include <charconv>
#include <iostream>
#include <optional>

#include "command/glance_json.h"
#include "command/picture.h"
#include "command/today.h"
#include "command/verbs.h"
#include "host/device_options.h"
#include "platform/device/terminal.h"
#include "platform/files/file_bytes.h"
#include "platform/text/display_width.h"

namespace lunabrook {

namespace {

constexpr int kWholePage = 80;

// NO_COLOR is any text that is not empty, as no-color.org says.
bool terminalHasColours() {
    const std::string terminal = environment("TERM");
    return standardOutputIsTerminal() && environment("NO_COLOR").empty() && !terminal.empty() && terminal != "dumb";
}

std::optional<int> widthOf(const std::string& text) {
    int width = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, width);
    const bool isWidth = read.ec == std::errc() && read.ptr == end;
    return isWidth && width >= kLeastPictureWidth && width <= kMostPictureWidth ? std::optional(width) : std::nullopt;
}

// What is wrong with the call, or nil.
std::optional<std::string> wrongIn(const TodayForm& form) {
    if (form.asPicture && form.asJson) {
        return "today is either a picture or an object: --svg or --json, not both";
    }
    if (!form.asPicture && (form.width || form.output)) {
        return std::string(form.width ? "--width" : "--output") +
               " is for the picture: lunabrook today --svg --width 360 --output morning.svg";
    }
    if (form.output && form.output->empty()) {
        return "--output names no file";
    }
    if (form.width && !widthOf(*form.width)) {
        return "--width is a number of pixels from " + std::to_string(kLeastPictureWidth) + " to " +
               std::to_string(kMostPictureWidth) + ", not " + quotedText(*form.width);
    }
    return std::nullopt;
}

ExitStatus showPicture(const Glance& glance, const TodayForm& form) {
    const int width = form.width ? *widthOf(*form.width) : kUsualPictureWidth;
    const std::string picture = morningPicture(glance, width);
    if (!form.output) {
        std::cout << picture;
        return ExitStatus::answered;
    }
    if (const auto wrong = writeFile(*form.output, picture)) {
        complain(quotedText(*form.output) + " cannot be written: " + *wrong);
        return ExitStatus::failed;
    }
    return ExitStatus::answered;
}

}  // namespace

ExitStatus showToday(const Device& device, const TodayForm& form) {
    if (const auto wrong = wrongIn(form)) {
        return complain(*wrong);
    }
    const Glance glance = glanceAt(device);
    if (form.asPicture) {
        return showPicture(glance, form);
    }
    std::cout << (form.asJson ? glanceJson(glance)
                              : todayText(glance, standardOutputColumns().value_or(kWholePage), terminalHasColours()));
    return ExitStatus::answered;
}

}  // namespace lunabrook
