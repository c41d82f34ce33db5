#include "vynaudiofilterhost/VST3/src/VST3ClassInfo.h"

#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"
#include "vyncore/strings/StringUtils.h"

#include <cstddef>
#include <cstring>
#include <vector>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using vyncore::UString;
using vyncore::string::UTF8to16;

namespace {

// Walks the classes with a getter of PClassInfo2 or PClassInfoW until one has this ID.
template <class Info, class Getter>
bool FindClass(Steinberg::TUID const cid, int32 count, Info& info, Getter&& get) {
    for (int32 index = 0; index < count; ++index) {
        info = Info();
        if (get(index, &info) == kResultOk && std::memcmp(info.cid, cid, sizeof(Steinberg::TUID)) == 0)
            return true;
    }
    return false;
}

bool ReadUnicodeInfo(Steinberg::TUID const cid, Steinberg::IPluginFactory& factory, VST3ClassInfo& facts) {
    PluginPointer const factory3(Query<Steinberg::IPluginFactory3>(&factory));
    Steinberg::PClassInfoW info;
    if (!factory3 || !FindClass(cid, PlausibleCount(factory3->countClasses(), kMaxClasses), info,
                                [&](int32 index, auto* out) { return factory3->getClassInfoUnicode(index, out); }))
        return false;
    facts.name = TextOf(info.name);
    facts.vendor = TextOf(info.vendor);
    facts.sdkVersion = TextOf(info.sdkVersion);
    facts.subCategories = TextOf(info.subCategories);
    return true;
}

void ReadByteInfo(Steinberg::TUID const cid, Steinberg::IPluginFactory& factory, VST3ClassInfo& facts) {
    PluginPointer const factory2(Query<Steinberg::IPluginFactory2>(&factory));
    Steinberg::PClassInfo2 info;
    if (!factory2 || !FindClass(cid, PlausibleCount(factory2->countClasses(), kMaxClasses), info,
                                [&](int32 index, auto* out) { return factory2->getClassInfo2(index, out); }))
        return;
    facts.name = UTF8to16(TextOf(info.name));
    facts.vendor = UTF8to16(TextOf(info.vendor));
    facts.sdkVersion = vyncore::string::AsciiToUTF16(TextOf(info.sdkVersion));
    facts.subCategories = TextOf(info.subCategories);
}

std::vector<UString> SplitAtDots(UString const& text) {
    std::vector<UString> pieces(1);
    for (char16_t const unit : text) {
        if (unit == u'.')
            pieces.emplace_back();
        else
            pieces.back().push_back(unit);
    }
    return pieces;
}

} // namespace

VST3ClassInfo ReadClassInfo(Steinberg::TUID const cid, Steinberg::IPluginFactory& factory) {
    VST3ClassInfo facts;
    Steinberg::PFactoryInfo factoryInfo;
    if (factory.getFactoryInfo(&factoryInfo) != kResultOk)
        return facts;
    if (!ReadUnicodeInfo(cid, factory, facts))
        ReadByteInfo(cid, factory, facts);
    if (facts.vendor.empty())
        facts.vendor = UTF8to16(TextOf(factoryInfo.vendor));
    return facts;
}

std::uint32_t ParseSDKVersion(UString const& text) {
    UString const prefix = u"VST ";
    UString const upper = vyncore::string::UpperCase(text);
    if (upper.compare(0, prefix.size(), prefix) != 0)
        return 0;
    std::vector<UString> const pieces = SplitAtDots(upper.substr(prefix.size()));
    if (pieces.size() < 3)
        return 0;
    std::uint32_t version = 0;
    for (std::size_t place = 0; place < 3; ++place) {
        unsigned number = 0;
        vyncore::string::StringToNumber(pieces[place], number);
        version = place == 0 ? number << 16 : version | number << (place == 1 ? 8 : 0);
    }
    return version;
}

} // namespace vynaudiofilterhost::vst3
