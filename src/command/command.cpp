#include "command/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <functional>
#include <iostream>
#include <system_error>

#include "command/verbs.h"
#include "host/device_option_flags.h"
#include "host/fault_list.h"
#include "platform/device/standard_output.h"
#include "voice/near_names.h"

namespace lunabrook {

namespace {

constexpr const char* kAbout =
    "Answers the nine sleep intents from the sleep tracker's store: one spoken sentence each.\n"
    "\n"
    "  lunabrook demo                             make up a week of sleep to play with\n"
    "  lunabrook ask sleep-rings readiness        two answers\n"
    "  lunabrook ask \"How long did I sleep?\"      as you would say it; alone it asks you\n"
    "  lunabrook ask --json time-asleep           for scripts, with the copyable summary\n"
    "  lunabrook today                            the whole morning at a glance\n"
    "\n"
    "Exit status: 0 answered (also with \"No Data\"), 1 an answer that failed, nothing delivered to\n"
    "the watch or output that cannot be written, 2 a wrong call, 3 a fault in the store or a string\n"
    "table; of several, the gravest.\n";

constexpr const char* kAskAbout =
    "Answers intents, one sentence a line, in order; each sees what the earlier ones wrote.\n"
    "\n"
    "INTENT is lights-off, time-asleep, readiness, sleep-fuel, blood-oxygen, respiration,\n"
    "latest-bedtime, sleep-rings, wrist-temperature, a class name such as ReadinessIntent, or a\n"
    "phrase such as \"How ready am I today?\", in your language or in English (`lunabrook intents`\n"
    "shows one for each). When one of several is unclear, none is answered.\n"
    "\n"
    "Without INTENT each line of standard input is one, answered before the next is read; on a\n"
    "terminal a prompt asks for it. Empty lines are passed over, unclear ones are told on standard\n"
    "error; the exit status is the gravest of all lines.\n";

constexpr const char* kMetricsAbout =
    "Shows the result dictionaries of the metrics as one JSON object; null where there is no data.\n"
    "The store stays as it is.\n"
    "\n"
    "NAME is requestQuality, requestSpO2, requestRespRate, requestWristTemp, requestReadiness,\n"
    "requestOctane, requestConsistencyDict or requestSleepBank; all of them when none is named.\n";

using Verb = std::function<ExitStatus(const Device&)>;

struct Call {
    DeviceOptions device;
    bool isQuestion = false;  // what it would write is dropped
    std::vector<std::string> names;
    bool asJson = false;
    std::string key;
    std::string file;
    Verb verb;
    FaultList faults;
};

void tellFaults(Call& call) { call.faults.tell("lunabrook"); }

void addStoreVerbs(CLI::App& app, Call& call) {
    CLI::App* store =
        app.add_subcommand("store", "Looks into the store or fills it")->fallthrough()->require_subcommand(1);
    CLI::App* show = store->add_subcommand("show", "Prints the store, or one key's value, as JSON")->fallthrough();
    show->add_option("KEY", call.key, "Such as bankDict; null when it is not there");
    show->callback([&call] { call.verb = [&call](const Device& device) { return showStore(device, call.key); }; });
    // The formatter takes a variable named as the C++20 keyword for one.
    CLI::App* importing = store->add_subcommand("import", "Takes over every key of a property list")->fallthrough();
    importing->add_option("FILE", call.file, "A property list, binary or XML")->required()->check(CLI::ExistingFile);
    importing->callback(
        [&call] { call.verb = [&call](const Device& device) { return importStore(device, call.file); }; });
}

void addWatchVerbs(CLI::App& app, Call& call) {
    CLI::App* watch = app.add_subcommand("watch", "Speaks to the paired watch")->fallthrough()->require_subcommand(1);
    watch->add_subcommand("push", "Sends the labels of this morning to the watch's inbox, PREFERENCES/watch")
        ->fallthrough()
        ->callback([&call] {
            call.isQuestion = true;
            call.verb = pushToWatch;
        });
}

void addVerbs(CLI::App& app, Call& call) {
    CLI::App* asking = app.add_subcommand("ask", kAskAbout)->fallthrough();
    asking->add_option("INTENT", call.names, "Which intents; else those of standard input");
    asking->add_flag("--json", call.asJson, "One JSON object a line: intent, code, response, dictionary");
    asking->callback([&call] {
        call.verb = [&call](const Device& device) {
            return call.names.empty() ? askLines(device, call.asJson, [&call] { tellFaults(call); })
                                      : ask(device, call.names, call.asJson);
        };
    });

    CLI::App* metrics = app.add_subcommand("metrics", kMetricsAbout)->fallthrough();
    metrics->add_option("NAME", call.names, "Which requests");
    metrics->callback([&call] {
        call.isQuestion = true;
        call.verb = [&call](const Device& device) { return showMetrics(device, call.names); };
    });

    app.add_subcommand("today", "Shows the whole morning at a glance")->fallthrough()->callback([&call] {
        call.isQuestion = true;
        call.verb = showToday;
    });
    CLI::App* intents =
        app.add_subcommand("intents", "Lists the nine intents: short name, title, a phrase")->fallthrough();
    intents->add_flag("--json", call.asJson,
                      "One JSON object a line, with example phrases, response codes and parameters");
    intents->callback(
        [&call] { call.verb = [&call](const Device& device) { return listIntents(device, call.asJson); }; });
    app.add_subcommand("demo", "Fills an empty preferences folder with a made-up week")
        ->fallthrough()
        ->callback([&call] { call.verb = makeDemo; });
    addStoreVerbs(app, call);
    addWatchVerbs(app, call);
}

// The first line of an argument fault, with a near verb when one was mistyped.
std::string wrongCallText(const CLI::App& app, const CLI::ParseError& error) {
    std::string text = error.what();
    text = text.substr(0, text.find('\n'));
    const std::vector<std::string> extras = app.remaining();
    if (app.get_subcommands().empty()) {
        std::vector<std::string> verbs;
        for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; })) {
            verbs.push_back(verb->get_name());
        }
        text = extras.empty() ? "no verb was named, such as ask or today"
                              : "there is no verb \"" + extras.front() + "\"" + suggestion(extras.front(), verbs);
    }
    return text + " (`lunabrook --help` shows how to call it)";
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
    return call.faults.empty() ? status : ExitStatus::fault;
}

// Whether everything that was said reached standard output. A reader that went away is no news to anybody.
ExitStatus finish(StandardOutput& output) {
    const int error = output.finish();
    if (error != 0 && error != EPIPE) {
        std::cerr << "lunabrook: the output cannot be written: " << std::generic_category().message(error) << "\n";
    }
    return error != 0 ? ExitStatus::failed : ExitStatus::answered;
}

ExitStatus parseAndRun(int argc, char** argv) {
    CLI::App app(kAbout, "lunabrook");
    app.require_subcommand(1)->fallthrough();
    app.set_version_flag("--version", LUNABROOK_VERSION);
    Call call;
    addDeviceOptions(app, call.device);
    addVerbs(app, call);
    try {
        app.parse(argc, argv);
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
    std::cout.flush();
    std::cerr << "lunabrook: " << what << "\n";
    return ExitStatus::wrongCall;
}

int runCommand(int argc, char** argv) {
    StandardOutput output;
    const ExitStatus status = parseAndRun(argc, argv);
    return static_cast<int>(std::max(status, finish(output)));
}

}  // namespace lunabrook
