#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vynhost {

/// A table of many rows for a person, with a heading over each column. A column without anything in its cells is left
/// out. A cell that is longer than most is not cut; it pushes the rest of its row aside.
class ColumnTable {
public:
    struct Column {
        std::string heading;
        bool alignsRight = false;
    };

    /// [any-thread]
    explicit ColumnTable(std::vector<Column> columns) : mColumns(std::move(columns)) {}

    /// @param cells  one for each column, in UTF-8; control characters in them become blanks
    /// [any-thread]
    void AddRow(std::vector<std::string> cells);

    /// The whole, each line with a line break behind it.
    /// [any-thread]
    std::string Finish() const;

private:
    std::size_t ChooseWidth(std::size_t column) const;

    std::vector<Column> mColumns;
    std::vector<std::vector<std::string>> mRows;
};

} // namespace vynhost
