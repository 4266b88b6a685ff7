#include "command/page.h"

#include <algorithm>

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

// Where the texts of a column stand.
struct Slot {
    bool isShown = true;
    int start = 0;
    int width = 0;
    int end() const { return start + width; }
};

int widestText(const std::vector<Row>& rows, std::size_t column) {
    int widest = 0;
    for (const Row& row : rows) {
        const bool counts = column < row.size() && !row[column].runsOn;
        widest = std::max(widest, counts ? displayWidth(row[column].text) : 0);
    }
    return widest;
}

// How close the columns of a table may stand; the first column keeps its width in each.
struct Spacing {
    bool keepsLeastWidths;
    int gap;
};
constexpr Spacing kSpacings[] = {{true, 2}, {false, 2}, {false, 1}};

// Lays the shown columns side by side and says where they end.
int layOut(std::vector<Slot>& slots, const std::vector<Column>& columns, const std::vector<Row>& rows,
           const Spacing& spacing) {
    int start = 0;
    int end = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (slots[i].isShown) {
            const bool isFirst = i == 0 && columns.size() > 1;
            const int least = isFirst || spacing.keepsLeastWidths ? columns[i].columns - spacing.gap : 0;
            const int widest = isFirst ? least : widestText(rows, i);
            slots[i] = {true, start, std::max(least, widest)};
            end = widest > 0 ? start + widest : end;
            start = slots[i].width > 0 ? slots[i].end() + spacing.gap : start;
        }
    }
    return end;
}

// Where a text must end: the page does, or its column, or what follows a text that runs on.
int limitOf(std::size_t column, const Row& row, const std::vector<Slot>& slots, int columns) {
    if (row[column].runsOn) {
        for (std::size_t next = column + 1; next < row.size(); ++next) {
            if (slots[next].isShown && !row[next].text.empty()) {
                return std::min(slots[next].start - 1, columns);
            }
        }
        return columns;
    }
    return std::min(column == 0 && slots.size() > 1 ? slots[0].end() : columns, columns);
}

bool cutsWhatRunsOn(const std::vector<Slot>& slots, const std::vector<Row>& rows, int columns) {
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i].runsOn && slots[i].isShown &&
                slots[i].start + displayWidth(row[i].text) > limitOf(i, row, slots, columns)) {
                return true;
            }
        }
    }
    return false;
}

std::vector<Slot> slotsWithin(int room, const std::vector<Column>& columns, const std::vector<Row>& rows) {
    std::vector<Slot> slots(columns.size());
    for (;;) {
        for (const Spacing& spacing : kSpacings) {
            if (layOut(slots, columns, rows, spacing) <= room && !cutsWhatRunsOn(slots, rows, room)) {
                return slots;
            }
        }
        const auto rank = [&](std::size_t i) { return slots[i].isShown ? columns[i].rank : 0; };
        std::size_t next = 0;
        for (std::size_t i = 1; i < columns.size(); ++i) {
            next = rank(i) > rank(next) ? i : next;
        }
        if (rank(next) == 0) {
            return slots;
        }
        slots[next].isShown = false;
    }
}

}  // namespace

void Page::addTable(const std::vector<Column>& columns, std::vector<Row> rows) {
    for (Row& row : rows) {
        for (Cell& cell : row) {
            cell.text = withoutControls(cell.text);
        }
    }
    const std::vector<Slot> slots = slotsWithin(columns_, columns, rows);
    for (const Row& row : rows) {
        int used = 0;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const Slot& slot = slots[i];
            const int room = limitOf(i, row, slots, columns_) - slot.start;
            if (!slot.isShown || row[i].text.empty() || room <= 0) {
                continue;
            }
            const std::string shown = textFittedTo(row[i].text, room);
            const int width = displayWidth(shown);
            const int start = columns[i].isRight ? std::max(slot.end() - width, slot.start) : slot.start;
            text_.append(static_cast<std::size_t>(start - used), ' ');
            addInked(shown, row[i].ink);
            used = start + width;
        }
        text_ += "\n";
    }
}

void Page::addInked(const std::string& shown, Ink ink) {
    const bool isColoured = hasColours_ && ink != Ink::plain;
    text_.append(isColoured ? escapeOf(ink) : "").append(shown).append(isColoured ? kPlainAgain : "");
}

}  // namespace lunabrook
