#pragma once

#include <sstream>
#include <string>

namespace vynhost {

/// A table of names and values for a person, under a title, that no locale of a plug-in's choosing can change. Control
/// characters in it become blanks.
class TextTable {
public:
    /// [any-thread]
    explicit TextTable(std::string const& title);

    /// Begins a row; its value is to be written into the stream. Numbers with a fraction are written as fixed-point.
    /// [any-thread]
    std::ostream& Row(std::string const& name);

    /// A row that is only there when the value is not empty.
    /// [any-thread]
    void Text(std::string const& name, std::string const& value);

    /// A row of a linear level, full scale being 1, in decibels too.
    /// [any-thread]
    void Level(std::string const& name, double level);

    /// The whole, with a line break behind it.
    /// [any-thread]
    std::string Finish() const;

private:
    std::string mRows;
    std::ostringstream mRow; ///< the last
};

} // namespace vynhost
