#include "vynaudiofilterhost/VST3/src/LanguageCode.h"

#include <string_view>

namespace vynaudiofilterhost::vst3 {

int LanguageCodeForLocale(char const* locale) noexcept {
    static constexpr std::string_view kLocales[] = {"de_DE", "fr_FR", "ja_JP", "es_ES", "it_IT", "ko_KR", "zh_CN"};
    std::string_view const text(locale ? locale : "");
    int code = 0;
    for (std::string_view const known : kLocales) {
        ++code;
        if (text == known)
            return code;
    }
    return 0;
}

} // namespace vynaudiofilterhost::vst3
