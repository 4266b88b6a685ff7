#include "command/page.h"

#include "platform/text/display_width.h"

namespace lunabrook {

namespace {

constexpr const char* kPlainAgain = "\x1b[0m";

const char* escapeOf(Ink ink) {
    switch (ink) {
        case Ink::heading:
            return "\x1b[1m";
        case Ink::quiet:
            return "\x1b[2m";
        case Ink::good:
            return "\x1b[32m";
        case Ink::bad:
            return "\x1b[31m";
        case Ink::rise:
            return "\x1b[33m";
        case Ink::fall:
            return "\x1b[36m";
        case Ink::plain:
            break;
    }
    return "";
}

}  // namespace

void Page::add(const std::vector<Cell>& cells) {
    int used = 0;
    std::string gap;  // written before the next text only, so that no line ends in blanks
    for (const Cell& cell : cells) {
        const int left = kColumns - used - static_cast<int>(gap.size());
        if (cell.text.empty() || left <= 0) {
            gap.append(static_cast<std::size_t>(cell.columns), ' ');
            continue;
        }
        const std::string shown = textFittedTo(withoutControls(cell.text), left);
        const int width = displayWidth(shown);
        const bool isColoured = hasColours_ && cell.ink != Ink::plain;
        text_.append(gap).append(isColoured ? escapeOf(cell.ink) : "").append(shown);
        text_.append(isColoured ? kPlainAgain : "");
        used += static_cast<int>(gap.size()) + width;
        gap.assign(static_cast<std::size_t>(cell.columns > width ? cell.columns - width : 1), ' ');
    }
    text_ += "\n";
}

}  // namespace lunabrook
