#include "host/call_parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "host/message.h"
#include "platform/text/display_width.h"
#include "platform/text/near_names.h"

namespace lunabrook {

namespace {

// The program and the verbs that were understood: lunabrook, store.
std::vector<const CLI::App*> calledVerbs(const CLI::App& app) {
    std::vector<const CLI::App*> verbs = {&app};
    while (!verbs.back()->get_subcommands().empty()) {
        verbs.push_back(verbs.back()->get_subcommands().back());
    }
    return verbs;
}

std::string joinedNames(const std::vector<const CLI::App*>& verbs) {
    std::string names;
    for (const CLI::App* verb : verbs) {
        names += (names.empty() ? "" : " ") + verb->get_name();
    }
    return names;
}

std::vector<KnownName> optionNames(const std::vector<const CLI::App*>& verbs) {
    std::vector<KnownName> names;
    for (const CLI::App* verb : verbs) {
        for (const CLI::Option* option : verb->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                names.push_back({"--" + name, "--" + name});
            }
        }
    }
    return names;
}

std::vector<KnownName> verbNames(const CLI::App& app) {
    std::vector<KnownName> names;
    for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back({verb->get_name(), verb->get_name()});
    }
    return names;
}

// What nobody asked for: a mistyped option, a mistyped verb, one word too many.
std::string unexpectedText(const std::vector<const CLI::App*>& verbs, const std::vector<std::string>& extras) {
    const auto option = std::find_if(extras.begin(), extras.end(),
                                     [](const std::string& extra) { return extra.size() > 1 && extra[0] == '-'; });
    if (option != extras.end()) {
        const std::string name = option->substr(0, option->find('='));
        const std::vector<KnownName> known = optionNames(verbs);
        if (verbs.size() > 1 &&
            std::any_of(known.begin(), known.end(), [&name](const KnownName& one) { return one.shown == name; })) {
            return name + " goes behind the verb: " + joinedNames(verbs) + " " + name;
        }
        return "there is no option " + name + suggestion(name, known);
    }
    const std::vector<KnownName> inner = verbNames(*verbs.back());
    const std::string word = quotedText(extras.front());
    if (!inner.empty()) {
        const std::string where = verbs.size() > 1 ? " of " + verbs.back()->get_name() : "";
        return "there is no verb " + word + where + suggestion(extras.front(), inner);
    }
    return verbs.size() > 1 ? verbs.back()->get_name() + " takes no " + word : "nothing is done with " + word;
}

std::string missingText(const std::vector<const CLI::App*>& verbs, const std::string& libraryText) {
    const std::vector<KnownName> inner = verbNames(*verbs.back());
    if (inner.empty()) {
        return joinedNames({verbs.begin() + 1, verbs.end()}) + " needs a " +
               libraryText.substr(0, libraryText.find(' '));
    }
    if (verbs.size() == 1) {
        return "no verb was named, such as ask or today";
    }
    std::vector<std::string> names;
    std::transform(inner.begin(), inner.end(), std::back_inserter(names),
                   [](const KnownName& verb) { return verb.shown; });
    return verbs.back()->get_name() + " needs a verb of its own: " + listed(names, " or ");
}

// The library names the option first: "--now: 1 required TIME missing", "--json was given ...".
std::string valueText(const std::vector<const CLI::App*>& verbs, const std::string& libraryText) {
    std::string name = libraryText.substr(0, libraryText.find_first_of(": "));
    name.insert(0, name.starts_with('-') ? "" : "--");
    for (const CLI::App* verb : verbs) {
        const CLI::Option* option = verb->get_option_no_throw(name);
        if (option != nullptr && !option->get_type_name().empty()) {
            return std::string(name).append(" needs a value: ").append(name).append(" ") + option->get_type_name();
        }
    }
    return name + " takes no value";
}

// "Could not convert: --width = abc"
std::string numberText(const std::string& libraryText) {
    constexpr std::string_view kBefore = "Could not convert: ";
    constexpr std::string_view kBetween = " = ";
    const std::size_t between = libraryText.find(kBetween);
    if (!libraryText.starts_with(kBefore) || between == std::string::npos) {
        return libraryText;
    }
    return libraryText.substr(kBefore.size(), between - kBefore.size()) + " takes a number, not " +
           quotedText(libraryText.substr(between + kBetween.size()));
}

std::string whatIsWrong(const std::vector<const CLI::App*>& verbs, const CLI::ParseError& error) {
    const std::vector<std::string> extras = verbs.front()->remaining(true);
    const std::string libraryText = error.what();
    const bool isMissing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    if (!extras.empty() && (isMissing || dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)) {
        return unexpectedText(verbs, extras);
    }
    if (isMissing) {
        return missingText(verbs, libraryText);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return valueText(verbs, libraryText);
    }
    return numberText(libraryText);
}

// Of the program or of any verb below it.
bool isOptionWithValue(const CLI::App& app, const std::string& name) {
    const CLI::Option* option = app.get_option_no_throw(name);
    const std::vector<const CLI::App*> verbs = app.get_subcommands([](const CLI::App*) { return true; });
    return (option != nullptr && !option->get_type_name().empty()) ||
           std::any_of(verbs.begin(), verbs.end(),
                       [&name](const auto* verb) { return isOptionWithValue(*verb, name); });
}

}  // namespace

void prepareParser(CLI::App& app) {
    constexpr std::size_t kNameColumns = 26;
    app.get_formatter()->column_width(kNameColumns);
    app.get_formatter()->label("SUBCOMMAND", "VERB");
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("-V,--version", LUNABROOK_VERSION, "Print the version");
}

void parseCall(CLI::App& app, int argc, char** argv) {
    std::vector<std::string> arguments;
    bool areOptions = true;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        areOptions = areOptions && argument != "--";
        // The library takes "--output=", which an empty variable leaves, for an option whose value is the next word.
        const std::string name = argument.substr(0, argument.size() - 1);
        const bool hasEmptyValue =
            areOptions && argument.starts_with("--") && argument.ends_with('=') && isOptionWithValue(app, name);
        arguments.push_back(hasEmptyValue ? name : argument);
        if (hasEmptyValue) {
            arguments.emplace_back();
        }
    }
    std::reverse(arguments.begin(), arguments.end());  // as the library wants them
    app.parse(std::move(arguments));
}

std::string wrongCallText(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<const CLI::App*> verbs = calledVerbs(app);
    return whatIsWrong(verbs, error) + " (`" + joinedNames(verbs) + " --help` shows how to call it)";
}

std::optional<int> exitAfterParsing(CLI::App& app, int argc, char** argv, StandardOutput& output) {
    try {
        parseCall(app, argc, argv);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            app.exit(error);
            return output.finish() == 0 ? 0 : 1;
        }
        constexpr int kWrongCall = 2;
        tell(app.get_name(), wrongCallText(app, error));
        return kWrongCall;
    }
}

}  // namespace lunabrook
