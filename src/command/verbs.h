// The command's verbs: each prints its answer and returns the exit status, faults apart.

#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "platform/device/device.h"

namespace lunabrook {

// 3 comes from the device's fault listener, whatever the verb returned.
enum class ExitStatus { answered = 0, failed = 1, wrongCall = 2, fault = 3 };  // of several, the gravest

// One sentence a line, or with `asJson` one object a line; in order, each intent seeing what the earlier ones wrote.
// An intent is named or asked for by a phrase; nothing is answered when one is unclear.
ExitStatus ask(const Device& device, const std::vector<std::string>& intents, bool asJson);

// The same for each line of standard input, with a prompt on a terminal; an unclear line is told and the next one read.
// The gravest status of all lines.
ExitStatus askLines(const Device& device, bool asJson, const std::function<void()>& afterEach);

// One object: each metric's result dictionary or null; all metrics when none is named.
ExitStatus showMetrics(const Device& device, const std::vector<std::string>& names);

// How `today` shows the morning; as it was called, so that wrong ones can be told.
struct TodayForm {
    bool asPicture = false;
    bool asJson = false;
    std::optional<std::string> width;   // of the picture, in pixels
    std::optional<std::string> output;  // the picture's file; else standard output
};

// The morning at a glance: a page, with colours on a terminal unless NO_COLOR is set, a picture or one object.
ExitStatus showToday(const Device& device, const TodayForm& form);

// Short name, title and a phrase of each intent; as JSON one object a line with all that is defined.
ExitStatus listIntents(const Device& device, std::ostream& output);
ExitStatus listIntentsAsJson(const Device& device);

// Fills an empty preferences folder; refuses when a store is there, but `again` for one that it made itself and nobody
// changed. `program` is how to call the program on this device, with a blank behind it.
ExitStatus makeDemo(const Device& device, bool again, const std::string& program);

// The whole store, or the value of one key, as JSON; null for a key that is not there.
ExitStatus showStore(const Device& device, const std::string& key);

// Takes over every key of another property list.
ExitStatus importStore(const Device& device, const std::string& file);

// Sends the labels of the morning to the watch's inbox and says whether they were delivered; failed when they were not.
ExitStatus pushToWatch(const Device& device);

std::filesystem::path storeFile(const Device& device);

// Says one line on standard error, after what was said on standard output; a wrong call.
ExitStatus complain(const std::string& what);

}  // namespace lunabrook
