// Whether a person sits at the other end.

#pragma once

namespace lunabrook {

bool standardInputIsTerminal();
bool standardOutputIsTerminal();

}  // namespace lunabrook
