#include "vynaudiofilterhost/VST3/src/VST3EventList.h"

#include "support/NoAllocationScope.h"

#include <gtest/gtest.h>

using namespace vynaudiofilterhost::vst3;
using Steinberg::int32;
using Steinberg::Vst::Event;

TEST(VST3EventListTest, KeepsEventsInOrderAndDropsWhatComesWhenItIsFull) {
    VST3EventList list(2048);
    vyntest::NoAllocationScope const guard;
    Event event{};
    for (int block = 0; block < 2; ++block) {
        for (event.sampleOffset = 0; event.sampleOffset < 2048; ++event.sampleOffset)
            ASSERT_EQ(list.addEvent(event), Steinberg::kResultOk);
        EXPECT_EQ(list.addEvent(event), Steinberg::kResultFalse);
        EXPECT_EQ(list.getEventCount(), 2048);
        EXPECT_EQ(list.getEvent(2047, event), Steinberg::kResultOk);
        EXPECT_EQ(event.sampleOffset, 2047);
        for (int32 outside : {-1, 2048, Steinberg::kMinInt32, Steinberg::kMaxInt32})
            EXPECT_EQ(list.getEvent(outside, event), Steinberg::kResultFalse);
        list.Clear();
        EXPECT_EQ(list.getEvent(0, event), Steinberg::kResultFalse);
    }
}
