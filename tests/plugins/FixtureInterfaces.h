#pragma once

#include "plugins/FixtureConfiguration.h"

#include "pluginterfaces/base/funknown.h"
#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/vst/vsttypes.h"

#include <string>

/// What all objects of the fixture modules need of the interfaces.
namespace vynfixtures {

using namespace Steinberg;
using namespace Steinberg::Vst;

DECLARE_UID(const kVendorHostID, 0x7FCBCFCE, 0x2862476A, 0xBFF2219B, 0xCA70789D)
DECLARE_UID(const kVendorComponentID, 0x872EE790, 0x61B243A2, 0x8DBA33C1, 0xD9262D3E)
DECLARE_UID(const kVendorControllerID, 0x3C8A2F25, 0x14114BF7, 0x851B13CB, 0x9C55AC92)
DECLARE_UID(const kVendorProcessorID, 0xF83AD871, 0x25F94500, 0x903A25AA, 0x46A3848C)

/// The kinds of classes, as they enter a class ID.
enum ClassKind : unsigned { kAudioClass, kControllerClass, kOtherClass };

/// The class factory of this module: one static object, which its references only count.
IPluginFactory* GetFactory();
int GetFactoryReferences();

/// The ID of this module's class `index` of a kind.
void CopyClassID(ClassKind kind, int index, TUID to);

inline bool SameID(void const* left, void const* right) {
    return FUnknownPrivate::iidEqual(left, right);
}

/// The interface `id` of an object, or null.
template <class Interface>
IPtr<Interface> Ask(FUnknown* object, TUID const id) {
    void* found = nullptr;
    if (object == nullptr || object->queryInterface(id, &found) != kResultOk)
        return nullptr;
    return owned(static_cast<Interface*>(found));
}

/// Fills a field of the interfaces with a text; without terminator it is followed by 'x' up to the field's end.
template <class Char, std::size_t N>
void FillText(Char (&field)[N], std::basic_string_view<Char> text, bool unterminated) {
    Char* const end = std::copy_n(text.data(), std::min(text.size(), N - 1), field);
    *end = Char{};
    if (unterminated)
        std::fill(end, field + N, Char{'x'});
}

/// ASCII text as the interfaces take it.
inline std::u16string Widen(std::string_view text) {
    return {text.begin(), text.end()};
}

} // namespace vynfixtures
