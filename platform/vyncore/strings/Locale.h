#pragma once

#include "vyncore/Export.h"

#include <locale>

namespace vyncore {

/// The rules for letters. There is one, the same on every machine whatever the user's settings are, so that a text made
/// here reads the same elsewhere. Numbers never depend on it.
class VYN_API Locale {
public:
    /// The one locale; lives as long as the process.
    /// [any-thread]
    static Locale const& Default();

    /// The same rules for code that works with the standard library's facets.
    /// [any-thread]
    std::locale const& AsStdLocale() const { return mLocale; }

    /// The upper-case form of a letter; anything else, half of a surrogate pair included, comes back as it is.
    /// [any-thread]
    char16_t ToUpper(char16_t unit) const;

private:
    Locale();

    std::locale mLocale;
};

} // namespace vyncore
