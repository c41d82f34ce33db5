#pragma once

namespace vynaudiofilterhost::vst3 {

/// The number that tells a plug-in of this host its user's language, for a locale such as "de_DE". The whole text
/// counts: 0 for any other, null and "en_US" among them.
/// [any-thread]
int LanguageCodeForLocale(char const* locale) noexcept;

} // namespace vynaudiofilterhost::vst3
