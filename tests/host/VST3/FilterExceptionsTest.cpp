#include "FilterFixture.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"

#include <numeric>

namespace {

using namespace vyntest;
using testing::EndsWith;

/// A plug-in with everything that the host asks for, so that every call is made.
FixtureConfiguration FullPlugin() {
    FixtureConfiguration configuration;
    configuration.AddPrograms(3);
    configuration.vendorInterfaces = true;
    configuration.SetBuses({FixtureBus::Make(3), FixtureBus::Make(3, u"Side", 1)}, {FixtureBus::Make(3)});
    return configuration;
}

class FilterExceptionsTest : public FilterTest {
protected:
    /// Channels that the plug-in was handed; each must have memory behind it.
    static int CountChannels(FixtureBlockBuses const& buses) {
        int const count = std::accumulate(buses.channels, buses.channels + buses.count, 0);
        for (int channel = 0; channel < count; ++channel)
            EXPECT_NE(buses.buffers[channel], nullptr);
        return count;
    }

    /// A block through whatever buses the filter has now.
    void RenderAllChannels() {
        SampleBlock in(filter->GetNumberOfInputChannels(), 64), out(filter->GetNumberOfOutputChannels(), 64);
        Resume(64);
        Render(in, out, 64);
        EXPECT_EQ(CountChannels(fixture->LastBlock().inputs), filter->GetNumberOfInputChannels());
        EXPECT_EQ(CountChannels(fixture->LastBlock().outputs), filter->GetNumberOfOutputChannels());
        filter->Suspend();
    }
};

TEST_F(FilterExceptionsTest, ConstructionThatThrowsGivesNoFilterAndLeavesNothing) {
    Open(FullPlugin());
    ASSERT_TRUE(filter);
    filter.reset();
    int const references = (*fixture)->factoryReferences();
    for (char const* const call :
         {"Component.initialize", "Component.GetDisplayNameLength", "Component.queryInterface",
          "Component.getControllerClassId", "Controller.initialize", "Controller.setComponentHandler",
          "Component.connect", "Controller.connect", "Component.getState", "Controller.setComponentState",
          "Controller.getParameterInfo", "Component.getBusInfo", "Component.getLatencySamples",
          "Controller.getUnitInfo", "Component.setupProcessing"}) {
        SCOPED_TRACE(call);
        EXPECT_NO_THROW(Open(FullPlugin().ThrowIn(call)));
        EXPECT_FALSE(filter);
        filter.reset();
        EXPECT_EQ((*fixture)->liveObjects(), 0);
        EXPECT_EQ((*fixture)->factoryReferences(), references);
        EXPECT_THAT(fixture->CallTexts({"destroyed"}), Each(EndsWith("(0)"))) << "initialized and not terminated";
    }
}

TEST_F(FilterExceptionsTest, TeardownGoesOnAfterAnException) {
    struct Case {
        char const* call;
        int from = 1;
    };
    for (Case const& row :
         {Case{"Component.disconnect"}, Case{"Controller.disconnect"}, Case{"Controller.setComponentHandler", 2},
          Case{"Controller.terminate"}, Case{"Component.terminate"}, Case{"Component.releaseVendor", 2}}) {
        SCOPED_TRACE(row.call);
        Open(FullPlugin().ThrowIn(row.call, row.from));
        ASSERT_TRUE(filter);
        fixture->ClearCalls();
        EXPECT_NO_THROW(filter.reset());
        EXPECT_EQ((*fixture)->liveObjects(), 0);
        EXPECT_EQ(fixture->CountCalls("disconnect"), 2);
        EXPECT_EQ(fixture->CountCalls("terminate"), 2);
    }
}

TEST_F(FilterExceptionsTest, BusQuestionsThatThrowLeaveAFilterThatRenders) {
    PluginLocator const locator(kTechnologyVST3, FixturePath16("configurable.vst3"));
    AudioFilter::Buses const surround = Buses({6});
    for (int from = 1; from <= 6; ++from) {
        for (bool const describes : {true, false}) {
            SCOPED_TRACE(testing::Message() << "from question " << from << ", describes " << describes);
            Open(FullPlugin());
            ASSERT_TRUE(filter);
            fixture->Configure(FullPlugin().ThrowIn("Component.getBusInfo", from));
            if (describes) {
                EXPECT_NO_THROW(filter->CreateFilterDescriptor(locator, false));
            } else {
                EXPECT_ANY_THROW(filter->RequestBusConfiguration(surround, surround));
            }
            fixture->Configure(FullPlugin());
            RenderAllChannels();
            filter->RequestBusConfiguration(surround, surround);
            EXPECT_EQ(filter->GetNumberOfOutputChannels(), 6) << "the next request finds the plug-in as ever";
            RenderAllChannels();
        }
    }
}

} // namespace
