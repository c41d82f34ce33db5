#include "vynhost/TextTable.h"

#include <cmath>
#include <iomanip>
#include <locale>

namespace vynhost {

TextTable::TextTable(std::string const& title) {
    mText.imbue(std::locale::classic());
    mText << std::fixed << title;
}

std::ostream& TextTable::Row(std::string const& name) {
    mText << "\n  " << std::left << std::setw(16) << name;
    return mText;
}

void TextTable::Text(std::string const& name, std::string const& value) {
    if (!value.empty())
        Row(name) << value;
}

void TextTable::Level(std::string const& name, double level) {
    Row(name) << std::setprecision(6) << level;
    if (level > 0.0)
        mText << "  " << std::setprecision(1) << 20.0 * std::log10(level) << " dBFS";
    else
        mText << "  silence";
}

} // namespace vynhost
