// Whether a person sits at the other end, and how wide the window is.

#pragma once

#include <optional>

namespace lunabrook {

bool standardInputIsTerminal();
bool standardOutputIsTerminal();

// Nil when it is no terminal, or one that does not say.
std::optional<int> standardOutputColumns();

}  // namespace lunabrook
