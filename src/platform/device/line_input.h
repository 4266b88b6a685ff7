// Lines of standard input, one after the other; on a terminal with a prompt, line editing and a history.
//
// The editing library is loaded when a conversation begins and not before, so that a single question does not wait for
// it; where it is not installed, the terminal's own few keys remain.

#pragma once

#include <memory>
#include <optional>
#include <string>

namespace lunabrook {

class LineInput {
public:
    // The prompt, "> ", goes to standard error, as everything that is no answer.
    LineInput();
    ~LineInput();
    LineInput(const LineInput&) = delete;
    LineInput& operator=(const LineInput&) = delete;

    // More than anybody speaks.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 10;

    // Without its end; nil at the end of the input. A longer one is cut off there.
    std::optional<std::string> next();
    // Whether the input ended because it could not be read.
    bool hasFailed() const;

private:
    class Editor;

    std::optional<std::string> plainLine();

    bool isTerminal_;
    std::unique_ptr<Editor> editor_;  // null where there is no terminal or no library
};

}  // namespace lunabrook
