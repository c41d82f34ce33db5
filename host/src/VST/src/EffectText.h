#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/strings/UString.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace vynaudiofilterhost::vst {

/// The text in a field of an effect's record: up to its first 0, or the whole field when it lacks one.
/// [any-thread]
inline std::string_view FieldText(char const* field, std::size_t size) {
    return {field, static_cast<std::size_t>(std::find(field, field + size, '\0') - field)};
}

/// A buffer into which an effect writes a text: kBytes of it count. There is more behind them, because effects write
/// past what the interface allows.
template <std::size_t kBytes>
class EffectText {
public:
    /// [any-thread]
    void* GetBuffer() noexcept { return mBytes.data(); }

    /// What was written, up to the first 0; of a text without one all that counts.
    /// [any-thread]
    std::string_view Get() const { return FieldText(mBytes.data(), kBytes); }

    /// The same, read as UTF-8.
    /// [any-thread]
    vyncore::UString GetAsUTF8() const { return vyncore::string::UTF8to16(Get()); }

private:
    static constexpr std::size_t kOverrun = 512;

    std::array<char, kBytes + kOverrun> mBytes{};
};

using EffectNameText = EffectText<kEffectTextBytes>;
using ParameterText = EffectText<kParameterTextBytes>;

/// What the effect calls itself, and its maker; empty when it says nothing or throws.
/// [main-thread]
vyncore::UString ReadEffectName(AEffect* effect);
vyncore::UString ReadVendorString(AEffect* effect);

} // namespace vynaudiofilterhost::vst
