#pragma once

#include "support/FixtureModule.h"
#include "support/SampleBlock.h"
#include "support/VSTFixtureModule.h"
#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vyntest {

/// A test over a filter of a VST 2.x fixture module, loaded and unloaded by the library for each test. Whatever the
/// test does, every effect is closed at its end, no byte that is not the host's is written in an effect's record, and
/// no call is made that the interface doesn't have.
class VSTFilterTest : public testing::Test {
protected:
    VSTFilterTest() { vynaudiofilterhost::Initialize(true); }

    ~VSTFilterTest() override {
        Close();
        vynaudiofilterhost::Terminate();
        fixture.reset();
    }

    /// Makes the module's effect `number`, or the one of the configuration's own number.
    void Open(vynfixtures::VSTFixtureConfiguration const& configuration, unsigned number = 0) {
        Close();
        fixture = std::make_unique<vynfixtures::VSTFixtureModule>("configurable.so", configuration);
        std::u16string const path = vynfixtures::VSTFixtureModule::Path16("configurable.so");
        module = vynaudiofilterhost::vst::FindOrLoadVSTModule(path);
        ASSERT_TRUE(module);
        filter = module->CreateAudioFilter(
            vynaudiofilterhost::vst::MakeVSTUniqueID(number != 0 ? number : configuration.uniqueID, path));
    }

    void Close() {
        filter.reset();
        module.reset();
        if (!fixture)
            return;
        EXPECT_EQ((*fixture)->liveEffects(), 0) << "effects were left open";
        EXPECT_EQ(fixture->Snapshot().spoiltRecords, 0);
        EXPECT_EQ(fixture->Snapshot().droppedCalls, 0);
        EXPECT_THAT(fixture->IllFormedCalls(), testing::IsEmpty());
    }

    void Resume(int blockSize = 4096) {
        filter->SetBlockSize(blockSize);
        filter->Resume();
        fixture->ClearCalls();
    }

    vynaudiofilterhost::ChannelFlags Render(SampleBlock& in, SampleBlock& out, int samples, std::uint64_t silent = 0) {
        vynaudiofilterhost::ChannelFlags outFlags(~std::uint64_t{0});
        filter->ProcessWithMapping(in.Get(), out.Get(), samples, vynaudiofilterhost::ChannelFlags(silent), outFlags);
        return outFlags;
    }

    std::unique_ptr<vynfixtures::VSTFixtureModule> fixture;
    boost::intrusive_ptr<vynaudiofilterhost::vst::VSTPluginModule> module;
    boost::intrusive_ptr<vynaudiofilterhost::AudioFilter> filter;
};

/// What constructing a filter sends to an effect that is no synth by its flags, behind the entry function, with this
/// many parameters without properties.
inline std::vector<std::string> ConstructionCalls(int parameters) {
    std::vector<std::string> names{"effGetPlugCategory", "effOpen", "effSetSampleRate", "effSetBlockSize",
                                   "effGetEffectName"};
    for (int parameter = 0; parameter < parameters; ++parameter)
        names.insert(names.end(),
                     {"effGetParameterProperties", "effGetParamLabel", "effGetParamName", "effGetParameterProperties"});
    return names;
}

/// The names of both, one behind the other.
inline std::vector<std::string> Joined(std::vector<std::string> first, std::vector<std::string> const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace vyntest
