#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include "support/NoAllocationScope.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <utility>
#include <vector>

using namespace vynaudiofilterhost::vst3;
using Steinberg::int32;
using Steinberg::Vst::IParamValueQueue;
using Steinberg::Vst::ParamID;
using vyntest::NoAllocationScope;

namespace {

using PointList = std::vector<std::pair<int32, double>>;

PointList PointsOf(IParamValueQueue& queue) {
    PointList points;
    for (int32 i = 0; i < queue.getPointCount(); ++i) {
        int32 offset = 0;
        double value = 0;
        EXPECT_EQ(queue.getPoint(i, offset, value), Steinberg::kResultOk);
        points.emplace_back(offset, value);
    }
    return points;
}

std::vector<ParamID> ParametersOf(ParameterChanges& changes) {
    std::vector<ParamID> parameters;
    for (int32 i = 0; i < changes.getParameterCount(); ++i)
        parameters.push_back(changes.getParameterData(i)->getParameterId());
    return parameters;
}

int32 Add(ParameterChanges& changes, ParamID parameter) {
    int32 index = -1;
    IParamValueQueue* const queue = changes.addParameterData(parameter, index);
    EXPECT_EQ(changes.getParameterData(index), queue);
    return index;
}

} // namespace

TEST(ParameterValueQueueTest, PointsStayInOrderAndOneOffsetHasOneValue) {
    ParameterValueQueue queue;
    EXPECT_EQ(queue.getParameterId(), Steinberg::Vst::kNoParamId);
    struct {
        int32 offset;
        double value;
        int32 index;
    } const kSteps[] = {{10, 0.1, 0}, {30, 0.3, 1}, {20, 0.2, 1}, {30, 0.5, 2}, {-5, 0.9, 0}, {10, 0.6, 1}, {99, 1, 4}};
    for (auto const& step : kSteps) {
        int32 index = -1;
        EXPECT_EQ(queue.addPoint(step.offset, step.value, index), Steinberg::kResultOk);
        EXPECT_EQ(index, step.index) << step.offset;
    }
    EXPECT_EQ(PointsOf(queue), (PointList{{-5, 0.9}, {10, 0.6}, {20, 0.2}, {30, 0.5}, {99, 1}}));

    int32 offset = 7;
    double value = 7;
    for (int32 outside : {-1, 5, Steinberg::kMinInt32, Steinberg::kMaxInt32})
        EXPECT_EQ(queue.getPoint(outside, offset, value), Steinberg::kResultFalse);
    EXPECT_EQ(offset, 7);
}

TEST(ParameterValueQueueTest, HundredPointsAllocateNothingAndMoreAreKept) {
    ParameterChanges changes;
    changes.SetMaxParameters(3);
    int32 index = -1;
    IParamValueQueue& queue = *changes.addParameterData(1, index);
    IParamValueQueue& neighbour = *changes.addParameterData(2, index);
    {
        NoAllocationScope const guard;
        for (int32 offset = 99; offset >= 0; --offset) {
            queue.addPoint(offset, offset, index);
            neighbour.addPoint(offset, -offset, index);
        }
    }
    for (int32 offset = 100; offset < 500; ++offset)
        queue.addPoint(offset, offset, index);
    PointList const points = PointsOf(queue);
    ASSERT_EQ(points.size(), 500u);
    for (int32 i = 0; i < 500; ++i)
        EXPECT_EQ(points[static_cast<std::size_t>(i)], (std::pair<int32, double>(i, i)));
    EXPECT_EQ(PointsOf(neighbour)[99].second, -99) << "the queues share a block";
}

TEST(ParameterChangesTest, ParameterKeepsItsQueueUntilClearAndComesBackEmpty) {
    ParameterChanges changes;
    changes.SetMaxParameters(2);
    EXPECT_EQ(Add(changes, 7), 0);
    EXPECT_EQ(Add(changes, 0xFFFFFFFF), 1);
    int32 index = -1;
    changes.addParameterData(7, index)->addPoint(0, 0.5, index);
    EXPECT_EQ(Add(changes, 7), 0);
    EXPECT_EQ(changes.getParameterData(0)->getPointCount(), 1);
    changes.SetMaxParameters(-1);
    EXPECT_EQ(changes.getParameterCount(), 2);
    for (int32 outside : {-1, 2, Steinberg::kMinInt32})
        EXPECT_EQ(changes.getParameterData(outside), nullptr);

    changes.Clear();
    EXPECT_EQ(changes.getParameterCount(), 0);
    EXPECT_EQ(changes.getParameterData(0), nullptr);
    EXPECT_EQ(Add(changes, 8), 0);
    EXPECT_EQ(Add(changes, 7), 1);
    EXPECT_EQ(changes.getParameterData(0)->getPointCount(), 0);
}

TEST(ParameterChangesTest, FindsEachParameterAsASearchThroughAllWouldHoweverThePoolChanges) {
    std::mt19937 random(20240607);
    ParameterChanges changes;
    std::vector<ParamID> expected;
    for (int step = 0; step < 20000; ++step) {
        if (random() % 300 == 0) {
            changes.Clear();
            expected.clear();
        } else if (random() % 500 == 0) {
            auto const count = random() % 200;
            changes.SetMaxParameters(static_cast<int>(count));
            expected.resize(std::min<std::size_t>(expected.size(), count));
        }
        auto const parameter = static_cast<ParamID>(random() % 150 << (random() % 2 * 20));
        auto const known = std::find(expected.begin(), expected.end(), parameter);
        ASSERT_EQ(Add(changes, parameter), known - expected.begin());
        if (known == expected.end())
            expected.push_back(parameter);
    }
    EXPECT_EQ(ParametersOf(changes), expected);
}

TEST(ParameterChangesTest, FiftyThousandParametersAllocateNothing) {
    constexpr int kCount = 50000;
    ParameterChanges changes;
    changes.SetMaxParameters(kCount);
    NoAllocationScope const guard;
    for (int block = 0; block < 3; ++block) {
        for (int i = 0; i < 2 * kCount; ++i) {
            int32 index = -1;
            auto const parameter = static_cast<ParamID>(i % kCount) * 2654435761u;
            changes.addParameterData(parameter, index)->addPoint(i, 1, index);
        }
        EXPECT_EQ(changes.getParameterCount(), kCount);
        EXPECT_EQ(changes.getParameterData(kCount - 1)->getPointCount(), 2);
        changes.Clear();
    }
}

TEST(ParameterChangesTest, QueueThatAPlugInHoldsOutlivesThePool) {
    int32 index = -1;
    IParamValueQueue* held = nullptr;
    {
        ParameterChanges changes;
        changes.SetMaxParameters(5);
        held = changes.addParameterData(9, index);
        held->addRef();
    }
    for (int32 offset = 0; offset < 150; ++offset)
        held->addPoint(offset, offset, index);
    EXPECT_EQ(PointsOf(*held)[149], (std::pair<int32, double>(149, 149)));
    EXPECT_EQ(held->release(), 0u);
}
