#include "command/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <functional>
#include <iostream>
#include <system_error>

#include "command/verbs.h"
#include "host/call_parser.h"
#include "host/device_option_flags.h"
#include "host/fault_list.h"
#include "host/message.h"
#include "metrics/store_keys.h"
#include "platform/device/standard_output.h"

namespace lunabrook {

namespace {

constexpr const char* kAbout =
    "Answers the nine sleep intents from the sleep tracker's store, each with one\n"
    "spoken sentence.\n"
    "\n"
    "  lunabrook demo                          make up a week of sleep to play with\n"
    "  lunabrook ask \"How long did I sleep?\"   in your words; alone it asks you\n"
    "  lunabrook ask sleep-rings readiness     two answers, by name\n"
    "  lunabrook today                         the whole morning at a glance\n";

constexpr const char* kStatuses =
    "`lunabrook VERB --help` says more about each.\n"
    "\n"
    "Exit status: 0 answered (also with \"No Data\"), 1 an answer that failed,\n"
    "nothing delivered to the watch or output that cannot be written, 2 a wrong\n"
    "call, 3 a fault in the store or a string table; of several, the gravest.\n";

constexpr const char* kDeviceNote =
    "Where the store is, what time it is, in which language and manner to answer:\n"
    "`lunabrook --help` shows the options for the device; they go with every verb.\n";

constexpr const char* kAskMore =
    "INTENT is lights-off, time-asleep, readiness, sleep-fuel, blood-oxygen,\n"
    "respiration, latest-bedtime, sleep-rings, wrist-temperature, or a phrase such\n"
    "as \"How ready am I today?\", in your language or in English (`lunabrook\n"
    "intents` shows one for each). They are answered in order, one sentence a line;\n"
    "each sees what the earlier ones wrote. When one of several is unclear, none is\n"
    "answered.\n"
    "\n"
    "Without INTENT each line of standard input is one, answered before the next is\n"
    "read; on a terminal that is a conversation. Empty lines are passed over,\n"
    "unclear ones are told on standard error; the exit status is the gravest of all\n"
    "lines.\n";

constexpr const char* kMetricsMore =
    "NAME is sleep-rings, blood-oxygen, respiration, wrist-temperature, readiness,\n"
    "sleep-fuel, bedtime-consistency or latest-bedtime (in that order:\n"
    "requestQuality, requestSpO2, requestRespRate, requestWristTemp,\n"
    "requestReadiness, requestOctane, requestConsistencyDict, requestSleepBank);\n"
    "all of them when none is named. A metric without data is null. The store stays\n"
    "as it is.\n";

constexpr const char* kTodayMore =
    "On a terminal in colours, unless NO_COLOR is set or TERM is dumb; a narrow\n"
    "one, down to 48 columns, loses columns. The store stays as it is.\n"
    "\n"
    "The picture is one SVG file for a browser, a dashboard or a lock screen, light\n"
    "or dark as its viewer prefers. With --output it is replaced as a whole; a new\n"
    "file is yours alone to read, an old one keeps its mode.\n";

constexpr const char* kDemoMore =
    "The week ends this morning. A store that is there already is not touched; with\n"
    "--again it is replaced when an earlier `demo` made it and nobody changed it\n"
    "since.\n";

using Verb = std::function<ExitStatus(const Device&)>;

struct Call {
    DeviceOptions device;
    bool isQuestion = false;     // what it would write is dropped
    bool readsTheStore = false;  // and says where it would be, when there is none
    std::vector<std::string> names;
    bool asJson = false;
    bool again = false;
    TodayForm today;
    std::string key;
    std::string file;
    Verb verb;
    FaultList faults;
};

void tellFaults(Call& call) { call.faults.tell("lunabrook"); }

// A verb of `app` that takes the device's options, and with `more` than one line to say.
CLI::App* addVerb(CLI::App& app, const char* name, const char* about, const std::string& more = "") {
    CLI::App* verb = app.add_subcommand(name, about)->fallthrough();
    return verb->group("Verbs")->footer(more.empty() ? kDeviceNote : more + "\n" + kDeviceNote);
}

void addStoreVerbs(CLI::App& app, Call& call) {
    CLI::App* store = addVerb(app, "store", "Looks into the store or fills it")->require_subcommand(1);
    CLI::App* show = addVerb(*store, "show", "Prints the store, or one key's value, as JSON");
    show->add_option("KEY", call.key, "Such as bankDict; null when it is not there")->type_name("");
    show->callback([&call] {
        call.readsTheStore = true;
        call.verb = [&call](const Device& device) { return showStore(device, call.key); };
    });
    // The formatter takes a variable named as the C++20 keyword for one.
    CLI::App* importing = addVerb(*store, "import", "Takes over every key of a property list");
    importing->add_option("FILE", call.file, "A property list, binary or XML")->required()->type_name("");
    importing->callback(
        [&call] { call.verb = [&call](const Device& device) { return importStore(device, call.file); }; });
}

void addWatchVerbs(CLI::App& app, Call& call) {
    CLI::App* watch = addVerb(app, "watch", "Speaks to the paired watch")->require_subcommand(1);
    addVerb(*watch, "push", "Sends it this morning's labels: PREFERENCES/watch")->callback([&call] {
        call.isQuestion = true;
        call.readsTheStore = true;
        call.verb = pushToWatch;
    });
}

CLI::Option* addJsonFlag(CLI::App& verb, Call& call, const char* help) {
    return verb.add_flag("--json", call.asJson, help)->disable_flag_override();
}

void addAsking(CLI::App& app, Call& call) {
    CLI::App* asking = addVerb(app, "ask", "Answers intents, named or asked for in words", kAskMore);
    asking->add_option("INTENT", call.names, "Which intents; else those of standard input")->type_name("");
    addJsonFlag(*asking, call, "An object a line: intent, code, response, dictionary");
    asking->callback([&call] {
        call.readsTheStore = true;
        call.verb = [&call](const Device& device) {
            return call.names.empty() ? askLines(device, call.asJson, [&call] { tellFaults(call); })
                                      : ask(device, call.names, call.asJson);
        };
    });
}

void addToday(CLI::App& app, Call& call) {
    CLI::App* today = addVerb(app, "today", "Shows the whole morning at a glance", kTodayMore);
    today->add_flag("--svg", call.today.asPicture, "As a picture")->disable_flag_override();
    today->add_option("--width", call.today.width, "Of the picture: 320 to 1600 pixels, else 1200")
        ->type_name("PIXELS")
        ->take_last();
    today->add_option("--output", call.today.output, "For the picture; else standard output")
        ->type_name("FILE")
        ->take_last();
    today->add_flag("--json", call.today.asJson, "As one object, for pictures of your own")->disable_flag_override();
    today->callback([&call] {
        call.isQuestion = true;
        call.readsTheStore = true;
        call.verb = [&call](const Device& device) { return showToday(device, call.today); };
    });
}

void addVerbs(CLI::App& app, Call& call) {
    addAsking(app, call);
    addToday(app, call);
    CLI::App* metrics = addVerb(app, "metrics", "Shows what the metrics come to, as JSON", kMetricsMore);
    metrics->add_option("NAME", call.names, "Which metrics; else all")->type_name("");
    metrics->callback([&call] {
        call.isQuestion = true;
        call.readsTheStore = true;
        call.verb = [&call](const Device& device) { return showMetrics(device, call.names); };
    });
    CLI::App* intents = addVerb(app, "intents", "Lists the nine intents: short name, title, a phrase");
    addJsonFlag(*intents, call, "An object a line, with phrases, codes and parameters");
    intents->callback([&call] {
        call.verb = [&call](const Device& device) {
            return call.asJson ? listIntentsAsJson(device) : listIntents(device, std::cout);
        };
    });
    CLI::App* demo = addVerb(app, "demo", "Makes up a week of sleep, in an empty folder", kDemoMore);
    demo->add_flag("--again", call.again, "Replace the store of an earlier demo")->disable_flag_override();
    demo->callback([&call] {
        call.verb = [&call](const Device& device) {
            return makeDemo(device, call.again, "lunabrook " + typedOptions(call.device));
        };
    });
    addStoreVerbs(app, call);
    addWatchVerbs(app, call);
}

// A first question is answered with "No Data"; this says why.
void tellMissingStore(const Call& call, const Device& device) {
    const std::filesystem::path file = storeFile(device);
    std::error_code error;
    if (call.readsTheStore && !std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
        complain("there is no store yet, it would be " + file.string() + "; `lunabrook " + typedOptions(call.device) +
                 "demo` makes one up");
    }
}

ExitStatus run(Call& call) {
    auto found = findDevice(call.device);
    if (const auto* wrong = std::get_if<WrongCall>(&found)) {
        return complain(wrong->what);
    }
    auto& [settings, notes] = std::get<FoundDevice>(found);
    for (const std::string& note : notes) {
        complain(note);
    }
    settings.dropsWrites = call.isQuestion;
    settings.faults = call.faults.listener();
    const Device device(std::move(settings));
    const ExitStatus status = call.verb(device);
    tellFaults(call);
    if (!call.faults.empty()) {
        return ExitStatus::fault;
    }
    if (status != ExitStatus::wrongCall) {
        tellMissingStore(call, device);
    }
    return status;
}

// Whether everything that was said reached standard output. A reader that went away is no news to anybody.
ExitStatus finish(StandardOutput& output) {
    const int error = output.finish();
    if (error != 0 && error != EPIPE) {
        complain("the output cannot be written: " + std::generic_category().message(error));
    }
    return error != 0 ? ExitStatus::failed : ExitStatus::answered;
}

ExitStatus parseAndRun(int argc, char** argv) {
    CLI::App app(kAbout, "lunabrook");
    app.require_subcommand(1)->fallthrough()->footer(kStatuses);
    prepareParser(app);
    Call call;
    addDeviceOptions(app, call.device);
    addVerbs(app, call);
    try {
        parseCall(app, argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app.exit(error);
            return ExitStatus::answered;
        }
        return complain(wrongCallText(app, error));
    }
    return run(call);
}

}  // namespace

ExitStatus complain(const std::string& what) {
    tell("lunabrook", what);
    return ExitStatus::wrongCall;
}

std::filesystem::path storeFile(const Device& device) {
    return device.preferences() / (std::string(kGroupSuite) + ".plist");
}

int runCommand(int argc, char** argv) {
    StandardOutput output;
    const ExitStatus status = parseAndRun(argc, argv);
    return static_cast<int>(std::max(status, finish(output)));
}

}  // namespace lunabrook
