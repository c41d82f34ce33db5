#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <functional>
#include <map>
#include <shared_mutex>
#include <string_view>

namespace vyncore::config {

/// Turns the texts that stand in the code into those that the user reads. A text in the code has the form
/// "$$$/key=default" in UTF-8; where the application gave no translation of the key, the default is shown.
/// One object for the process, made on first use.
class VYN_API Localizer {
public:
    /// [any-thread]
    static Localizer& Get();

    Localizer(Localizer const&) = delete;
    Localizer& operator=(Localizer const&) = delete;

    /// The translation of the text's key, else its default. A text of another form comes back as it is; one with a key
    /// and no "=" has an empty default.
    /// [any-thread]
    UString GetString(std::string_view zstring) const;

    /// Sets what is shown for `key`, which is written without the "$$$/". Takes the place of an earlier translation.
    /// [any-thread]
    void SetTranslation(std::string_view key, UString const& translation);

private:
    Localizer() = default;

    mutable std::shared_mutex mMutex;
    std::map<UTF8String, UString, std::less<>> mTranslations;
};

} // namespace vyncore::config
