#pragma once

#include "host/HostTest.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

namespace vyntest {

using InfoPointer = boost::intrusive_ptr<AudioFilterDescriptor>;

inline vyncore::utility::Guid const kKind(0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10});

inline InfoPointer MakeExternal(UString const& id, unsigned version = 1, bool synth = false,
                                UString const& path = u"/m/a.vst3") {
    return new AudioFilterDescriptor(PluginLocator(kTechnologyVST3, path), u"Name", u"Vendor", version, kCategoryEffect,
                                     id, kKind, synth);
}

inline InfoPointer MakeInternal(UString const& id, unsigned version = 1, bool synth = false) {
    return new AudioFilterDescriptor(u"Name", version, kCategoryEffect, id, kKind, synth, false, false);
}

/// A test on a catalogue that holds nothing but the legacy IDs of the tests before it.
class CatalogueTest : public testing::Test {
protected:
    CatalogueTest() { Empty(); }
    ~CatalogueTest() override { Empty(); }

    static std::vector<InfoPointer> Visible() { return {catalogue.InfoBegin(), catalogue.InfoEnd()}; }

    static inline auto& catalogue = AudioFilterDescriptorManager::GetInstance();

private:
    static void Empty() {
        catalogue.ClearExternalInfos();
        catalogue.ClearInfosForLocator(MakeInternal(u"")->GetLocator());
        catalogue.SetSynthsEnabled(false);
    }
};

} // namespace vyntest
