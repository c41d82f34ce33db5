#pragma once

#include "host/FilterTestBase.h"
#include "support/FixtureModule.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

namespace vyntest {

using namespace vst3;
using namespace vynfixtures;

/// A test over a filter of a fixture module, loaded and unloaded by the library for each test.
class FilterTest : public FilterTestBase<FixtureModule, VST3AudioFilter> {
protected:
    ~FilterTest() override {
        EndFilter();
        EXPECT_EQ(fixture ? (*fixture)->liveObjects() : 0, 0) << "objects of the plug-in were left behind";
        Terminate();
        fixture.reset();
    }

    void Open(FixtureConfiguration const& configuration, char const* name = "configurable.vst3") {
        EndFilter();
        fixture = std::make_unique<FixtureModule>(name, configuration);
        auto const module = FindOrLoadVST3Module(FixturePath16(name));
        if (module)
            filter = module->CreateVST3Filter(fixture->UniqueID());
    }

    Texts CallTexts() const override { return fixture->CallTexts(); }
};

} // namespace vyntest
