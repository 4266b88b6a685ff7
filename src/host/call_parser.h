// How every program reads its arguments: help that fits a terminal, and the same words for what is wrong.
//
//   lunabrook: there is no option --nwo; did you mean --now? (`lunabrook today --help` shows how to call it)

#pragma once

#include <optional>
#include <string>

#include "platform/device/standard_output.h"

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace lunabrook {

// Lays the help out for 78 columns and adds -V and --version.
void prepareParser(CLI::App& app);

// Parses the arguments of a call; a library's fault says what is wrong.
void parseCall(CLI::App& app, int argc, char** argv);

// What was wrong and what would be right; one sentence.
std::string wrongCallText(const CLI::App& app, const CLI::ParseError& error);

// Parses the arguments of a service. Nil when it shall serve; else its exit status: 0 after the help or the version, 1
// when they could not be written, 2 for a wrong call, which one line on standard error tells.
std::optional<int> exitAfterParsing(CLI::App& app, int argc, char** argv, StandardOutput& output);

}  // namespace lunabrook
