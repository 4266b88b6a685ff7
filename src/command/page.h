// Lines for a terminal of 80 columns: cells that line up whatever characters they hold, and a few colours.
//
//   Page page(true);
//   page.add({{"HRV", 22}, {"58 ms", 9}, {"6 above baseline", 0, Ink::good}});
//   page.text() -> "HRV                   58 ms    \x1b[32m6 above baseline\x1b[0m\n"

#pragma once

#include <string>
#include <vector>

namespace lunabrook {

enum class Ink { plain, heading, quiet, good, bad, rise, fall };

struct Cell {
    std::string text;
    int columns = 0;  // at least; 0 is as wide as the text. A longer text is followed by one blank
    Ink ink = Ink::plain;
};

class Page {
public:
    static constexpr int kColumns = 80;

    explicit Page(bool hasColours) : hasColours_(hasColours) {}

    // A line; what goes beyond the last column is cut and ends in "…".
    void add(const std::vector<Cell>& cells);
    void addBlank() { text_ += "\n"; }

    const std::string& text() const { return text_; }

private:
    bool hasColours_;
    std::string text_;
};

}  // namespace lunabrook
