#pragma once

#include "vyncore/strings/UString.h"

#include "pluginterfaces/base/ipluginbase.h"

#include <cstdint>
#include <string>

namespace vynaudiofilterhost::vst3 {

/// What a factory says of one of its classes. What it does not say stays empty.
struct VST3ClassInfo {
    vyncore::UString name;
    std::string subCategories; ///< "Fx|Delay" and the like
    vyncore::UString vendor;
    vyncore::UString sdkVersion; ///< "VST 3.7.2" and the like
};

/// Asks the newest interface that the factory has. The factory's own vendor stands in for a class without one.
/// [main-thread]
VST3ClassInfo ReadClassInfo(Steinberg::TUID const cid, Steinberg::IPluginFactory& factory);

/// (major << 16) + (minor << 8) + patch of a text such as "VST 3.6.8", letter case ignored; 0 for any other text.
/// [any-thread]
std::uint32_t ParseSDKVersion(vyncore::UString const& text);

} // namespace vynaudiofilterhost::vst3
