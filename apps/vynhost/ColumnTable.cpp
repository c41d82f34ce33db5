#include "vynhost/ColumnTable.h"

#include "vynhost/OneLine.h"

#include <algorithm>
#include <utility>

namespace vynhost {

namespace {

std::size_t CountCharacters(std::string const& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](unsigned char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string Pad(std::string const& text, std::size_t width, bool right) {
    std::string const blanks(width - std::min(width, CountCharacters(text)), ' ');
    return right ? blanks + text : text + blanks;
}

} // namespace

void ColumnTable::AddRow(std::vector<std::string> cells) {
    std::ranges::transform(cells, cells.begin(), OnOneLine);
    mRows.push_back(std::move(cells));
}

// 0 for a column that is left out.
std::size_t ColumnTable::ChooseWidth(std::size_t column) const {
    constexpr std::size_t kMostWidth = 32;
    std::size_t width = 0;
    for (auto const& row : mRows)
        width = std::max(width, std::min(CountCharacters(row[column]), kMostWidth));
    return width == 0 ? 0 : std::max(width, CountCharacters(mColumns[column].heading));
}

std::string ColumnTable::Finish() const {
    std::vector<std::string> lines(mRows.size() + 1);
    for (std::size_t column = 0; column < mColumns.size(); ++column) {
        std::size_t const width = ChooseWidth(column);
        for (std::size_t line = 0; width > 0 && line < lines.size(); ++line) {
            std::string const& cell = line == 0 ? mColumns[column].heading : mRows[line - 1][column];
            lines[line] += "  " + Pad(cell, width, mColumns[column].alignsRight);
        }
    }
    std::string text;
    for (std::string& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

} // namespace vynhost
