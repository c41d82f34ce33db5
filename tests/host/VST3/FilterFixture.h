#pragma once

#include "support/FixtureModule.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vyntest {

/// Channels of samples, and the pointers to them that a filter takes: channel c's sample s is c + s / 65536.
class Block {
public:
    Block(int channels, int samples) : mSamples(static_cast<std::size_t>(channels)) {
        for (std::size_t channel = 0; channel < mSamples.size(); ++channel) {
            for (int sample = 0; sample < samples; ++sample)
                mSamples[channel].push_back(static_cast<float>(channel) + static_cast<float>(sample) / 65536.0f);
            mPointers.push_back(mSamples[channel].data());
        }
    }

    float** Get() { return mPointers.data(); }
    std::vector<float> const& operator[](std::size_t channel) const { return mSamples[channel]; }

private:
    std::vector<std::vector<float>> mSamples;
    std::vector<float*> mPointers;
};

/// A test over a filter of a fixture module, loaded and unloaded by the library for each test.
class FilterTest : public testing::Test {
protected:
    FilterTest() { vynaudiofilterhost::Initialize(true); }

    ~FilterTest() override {
        filter.reset();
        EXPECT_EQ(fixture ? (*fixture)->liveObjects() : 0, 0) << "objects of the plug-in were left behind";
        vynaudiofilterhost::Terminate();
        fixture.reset();
    }

    void Open(vynfixtures::FixtureConfiguration const& configuration, char const* name = "configurable.vst3") {
        fixture = std::make_unique<vynfixtures::FixtureModule>(name, configuration);
        auto const module = vynaudiofilterhost::vst3::FindOrLoadVST3Module(vynfixtures::FixturePath16(name));
        if (module)
            filter = module->CreateVST3Filter(fixture->UniqueID());
    }

    void Resume(int blockSize = 4096) {
        filter->SetBlockSize(blockSize);
        filter->Resume();
        fixture->ClearCalls();
    }

    vynaudiofilterhost::ChannelFlags Render(Block& in, Block& out, int samples, std::uint64_t silent = 0) {
        vynaudiofilterhost::ChannelFlags outFlags;
        filter->ProcessWithMapping(in.Get(), out.Get(), samples, vynaudiofilterhost::ChannelFlags(silent), outFlags);
        return outFlags;
    }

    std::unique_ptr<vynfixtures::FixtureModule> fixture;
    boost::intrusive_ptr<vynaudiofilterhost::vst3::VST3AudioFilter> filter;
};

} // namespace vyntest
