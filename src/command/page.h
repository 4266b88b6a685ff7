// Lines for a terminal: tables whose columns line up whatever characters they hold, and a few colours.
//
//   Page page(80, true);
//   page.addTable({{22}, {11}, {0, 1}}, {{{"HRV"}, {"58 ms"}, {"6 above baseline", Ink::good}}});
//   page.text() -> "HRV                   58 ms      \x1b[32m6 above baseline\x1b[0m\n"

#pragma once

#include <string>
#include <vector>

namespace lunabrook {

enum class Ink { plain, heading, quiet, good, bad, rise, fall };

struct Cell {
    std::string text;
    Ink ink = Ink::plain;
    bool runsOn = false;  // widens no column: goes on over those that are empty beside it
};
using Row = std::vector<Cell>;

struct Column {
    int columns = 0;       // at least, with the gap behind it; 0 is as wide as its widest text
    int rank = 0;          // what a narrow terminal loses first: the highest; 0 stays
    bool isRight = false;  // numbers
};

class Page {
public:
    Page(int columns, bool hasColours) : columns_(columns), hasColours_(hasColours) {}

    int columns() const { return columns_; }

    // Rows that line up. The first column is as wide as it says, and what is longer ends in "…"; the others take what
    // their texts need. Whole columns are lost until the rest fits.
    void addTable(const std::vector<Column>& columns, std::vector<Row> rows);
    void addBlank() { text_ += "\n"; }

    const std::string& text() const { return text_; }

private:
    void addInked(const std::string& shown, Ink ink);

    int columns_;
    bool hasColours_;
    std::string text_;
};

}  // namespace lunabrook
