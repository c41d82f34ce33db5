#pragma once

#include "host/FilterTestBase.h"
#include "support/FixtureModule.h"
#include "support/VSTFixtureModule.h"
#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"

#include <initializer_list>

namespace vyntest {

using namespace vst;
using namespace vynfixtures;

/// A test over a filter of a VST 2.x fixture module, loaded and unloaded by the library for each test. Whatever the
/// test does, every effect is closed at its end, no byte that is not the host's is written in an effect's record, and
/// no call is made that the interface doesn't have.
class VSTFilterTest : public FilterTestBase<VSTFixtureModule, AudioFilter> {
protected:
    ~VSTFilterTest() override {
        Close();
        Terminate();
        fixture.reset();
    }

    /// Makes the module's effect `number`, or the one of the configuration's own number.
    void Open(VSTFixtureConfiguration const& configuration, unsigned number = 0) {
        Close();
        fixture = std::make_unique<VSTFixtureModule>("configurable.so", configuration);
        std::u16string const path = VSTFixtureModule::Path16("configurable.so");
        module = FindOrLoadVSTModule(path);
        ASSERT_TRUE(module);
        filter = module->CreateAudioFilter(MakeVSTUniqueID(number != 0 ? number : configuration.uniqueID, path));
    }

    void Close() {
        EndFilter();
        module.reset();
        if (!fixture)
            return;
        EXPECT_EQ((*fixture)->liveEffects(), 0) << "effects were left open";
        EXPECT_EQ(fixture->Snapshot().spoiltRecords, 0);
        EXPECT_EQ(fixture->Snapshot().droppedCalls, 0);
        EXPECT_THAT(fixture->IllFormedCalls(), IsEmpty());
    }

    Texts CallTexts() const override { return fixture->Texts(); }

    boost::intrusive_ptr<VSTPluginModule> module;
};

/// What constructing a filter sends to an effect that is no synth by its flags, behind the entry function, with this
/// many parameters without properties.
inline Texts ConstructionCalls(int parameters) {
    Texts names{"effGetPlugCategory", "effOpen", "effSetSampleRate", "effSetBlockSize", "effGetEffectName"};
    for (int parameter = 0; parameter < parameters; ++parameter)
        names.insert(names.end(),
                     {"effGetParameterProperties", "effGetParamLabel", "effGetParamName", "effGetParameterProperties"});
    return names;
}

/// The names of all, one behind the other.
inline Texts Joined(std::initializer_list<Texts> parts) {
    Texts all;
    for (Texts const& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace vyntest
