#include "vyncore/config/Localizer.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <mutex>

namespace vyncore::config {

Localizer& Localizer::Get() {
    // Never destroyed: texts are still asked for while static objects go.
    static Localizer& localizer = *new Localizer;
    return localizer;
}

UString Localizer::GetString(std::string_view zstring) const {
    constexpr std::string_view kPrefix = "$$$/";
    if (!zstring.starts_with(kPrefix))
        return string::UTF8to16(zstring);
    zstring.remove_prefix(kPrefix.size());
    std::string_view const key = zstring.substr(0, zstring.find('='));
    {
        std::shared_lock const lock(mMutex);
        if (auto const found = mTranslations.find(key); found != mTranslations.end())
            return found->second;
    }
    return string::UTF8to16(zstring.substr(std::min(key.size() + 1, zstring.size())));
}

void Localizer::SetTranslation(std::string_view key, UString const& translation) {
    std::unique_lock const lock(mMutex);
    mTranslations.insert_or_assign(UTF8String(key), translation);
}

} // namespace vyncore::config
