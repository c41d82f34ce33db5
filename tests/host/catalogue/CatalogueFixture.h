#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

#include <gtest/gtest.h>

#include <vector>

namespace vyntest {

using InfoPointer = boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor>;

inline vyncore::utility::Guid const kKind(0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10});

inline InfoPointer MakeExternal(vyncore::UString const& id, unsigned version = 1, bool synth = false,
                                vyncore::UString const& path = u"/m/a.vst3") {
    using namespace vynaudiofilterhost;
    return new AudioFilterDescriptor(PluginLocator(kTechnologyVST3, path), u"Name", u"Vendor", version, kCategoryEffect,
                                     id, kKind, synth);
}

inline InfoPointer MakeInternal(vyncore::UString const& id, unsigned version = 1, bool synth = false) {
    using namespace vynaudiofilterhost;
    return new AudioFilterDescriptor(u"Name", version, kCategoryEffect, id, kKind, synth, false, false);
}

/// A test on a catalogue that holds nothing but the legacy IDs of the tests before it.
class CatalogueTest : public testing::Test {
protected:
    CatalogueTest() { Empty(); }
    ~CatalogueTest() override { Empty(); }

    static std::vector<InfoPointer> Visible() { return {catalogue.InfoBegin(), catalogue.InfoEnd()}; }

    static inline auto& catalogue = vynaudiofilterhost::AudioFilterDescriptorManager::GetInstance();

private:
    static void Empty() {
        catalogue.ClearExternalInfos();
        catalogue.ClearInfosForLocator(MakeInternal(u"")->GetLocator());
        catalogue.SetSynthsEnabled(false);
    }
};

} // namespace vyntest
