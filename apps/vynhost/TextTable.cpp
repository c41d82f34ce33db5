#include "vynhost/TextTable.h"

#include "vynhost/OneLine.h"

#include <cmath>
#include <iomanip>
#include <locale>

namespace vynhost {

TextTable::TextTable(std::string const& title) {
    mRow.imbue(std::locale::classic());
    mRow << std::fixed << title;
}

std::ostream& TextTable::Row(std::string const& name) {
    mRows = Finish();
    mRow.str({});
    mRow << "  " << std::left << std::setw(16) << name;
    return mRow;
}

std::string TextTable::Finish() const {
    return mRows + OnOneLine(mRow.str()) + '\n';
}

void TextTable::Text(std::string const& name, std::string const& value) {
    if (!value.empty())
        Row(name) << value;
}

void TextTable::Level(std::string const& name, double level) {
    Row(name) << std::setprecision(6) << level;
    if (level > 0.0)
        mRow << "  " << std::setprecision(1) << 20.0 * std::log10(level) << " dBFS";
    else
        mRow << "  silence";
}

} // namespace vynhost
