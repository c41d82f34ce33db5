#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"

#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

namespace {

using namespace vynaudiofilterhost::vst3;
using Steinberg::Vst::ParamID;
using testing::ElementsAre;

std::vector<double> PopAll(ParameterPointQueues& queues, ParamID id) {
    std::vector<double> values;
    double value = 0.0;
    for (std::int32_t offset = 0; queues.PopPoint(id, value, offset);)
        values.push_back(value);
    return values;
}

std::vector<ParamID> DrainIDs(ParameterPointQueues& queues) {
    ParameterChanges changes;
    changes.SetMaxParameters(10);
    queues.DrainToParameterChanges(changes);
    std::vector<ParamID> ids;
    for (Steinberg::int32 place = 0; place < changes.getParameterCount(); ++place)
        ids.push_back(changes.getParameterData(place)->getParameterId());
    return ids;
}

TEST(ParameterPointQueuesTest, RingKeepsTheNewestHundredPointsOfEachParameter) {
    ParameterPointQueues queues;
    queues.SetParameters({7, 3});
    for (int number = 0; number < 250; ++number)
        queues.PushPoint(7, number, number);
    queues.PushPoint(3, 0.5, 9);
    queues.PushPoint(4, 0.5, 0);
    std::vector<double> expected(100);
    std::iota(expected.begin(), expected.end(), 150.0);
    EXPECT_EQ(PopAll(queues, 7), expected);
    double value = 0.0;
    std::int32_t offset = 0;
    EXPECT_TRUE(queues.PopPoint(3, value, offset));
    EXPECT_EQ(offset, 9);
    EXPECT_FALSE(queues.PopPoint(4, value, offset));
    queues.PushPoint(7, 1.0, 0);
    EXPECT_THAT(PopAll(queues, 7), ElementsAre(1.0));
}

TEST(ParameterPointQueuesTest, DrainingGoesByIDAndTheTickByTheList) {
    ParameterPointQueues queues;
    std::vector<ParamID> const list = {900, 5, 0x80000000, 70, 5, 6};
    queues.SetParameters(list);
    auto const pushAll = [&] {
        for (ParamID const id : {70u, 0x80000000u, 5u, 900u})
            queues.PushPoint(id, 0.25, 0);
    };
    pushAll();
    EXPECT_THAT(DrainIDs(queues), ElementsAre(5u, 70u, 900u, 0x80000000u));
    EXPECT_TRUE(DrainIDs(queues).empty());
    pushAll();
    std::vector<ParamID> visited;
    queues.TakeChanged([&](ParamID id, ParameterPoint const&) { visited.push_back(id); });
    EXPECT_THAT(visited, ElementsAre(900u, 5u, 0x80000000u, 70u));
}

TEST(ParameterPointQueuesTest, PointsOfOneOffsetComeOutAsTheLastOfThem) {
    ParameterPointQueues queues;
    queues.SetParameters({1});
    ParameterChanges changes;
    changes.SetMaxParameters(1);
    queues.PushPoint(1, 0.25, 0);
    queues.PushPoint(1, 0.75, 0);
    {
        vyntest::NoAllocationScope const guard;
        EXPECT_TRUE(queues.DrainToParameterChanges(changes));
        EXPECT_FALSE(queues.DrainToParameterChanges(changes));
    }
    ASSERT_EQ(changes.getParameterCount(), 1);
    Steinberg::Vst::IParamValueQueue* const queue = changes.getParameterData(0);
    ASSERT_EQ(queue->getPointCount(), 1);
    Steinberg::int32 offset = -1;
    double value = 0.0;
    queue->getPoint(0, offset, value);
    EXPECT_EQ(value, 0.75);
    // And back by the other road.
    ParameterPointQueues back;
    back.SetParameters({1});
    EXPECT_TRUE(back.CollectFromParameterChanges(changes));
    EXPECT_THAT(PopAll(back, 1), ElementsAre(0.75));
}

TEST(ParameterPointQueuesTest, CopyHoldsThePointsOfTheSourceAndLeavesThemThere) {
    ParameterPointQueues queues;
    queues.SetParameters({20, 10});
    queues.PushPoint(20, 0.1, 0);
    queues.PushPoint(20, 0.2, 0);
    ParameterPointQueues copy(queues);
    EXPECT_THAT(PopAll(queues, 20), ElementsAre(0.1, 0.2));
    std::vector<double> values;
    copy.TakeChanged([&](ParamID, ParameterPoint const& point) { values.push_back(point.value); });
    EXPECT_THAT(values, ElementsAre(0.1, 0.2));
}

TEST(ParameterPointQueuesTest, SetOfFiftyThousandIsEmptiedInOrder) {
    AtomicIndexSet set(50000);
    std::vector<std::size_t> const numbers = {0, 63, 64, 4095, 4096, 49999};
    for (std::size_t place = numbers.size(); place-- > 0;)
        set.Insert(numbers[place]);
    std::vector<std::size_t> taken;
    set.TakeAll([&](std::size_t number) {
        if (number == 64 && taken.size() == 2)
            set.Insert(64);
        taken.push_back(number);
    });
    EXPECT_EQ(taken, numbers);
    taken.clear();
    set.TakeAll([&](std::size_t number) { taken.push_back(number); });
    EXPECT_THAT(taken, ElementsAre(64u));
    EXPECT_TRUE(set.IsEmpty());
}

// Two writers and a reader at once, meant for the thread sanitizer as well: no point is torn, each writer's points come
// out in its order, and its last one is never lost, whatever was overwritten on the way.
TEST(ParameterPointQueuesTest, TenMillionPointsOfTwoWritersStayWholeAndInOrder) {
    constexpr int kPointsPerWriter = 5'000'000;
    constexpr ParamID kParameters = 70;
    std::vector<ParamID> ids(kParameters);
    std::iota(ids.begin(), ids.end(), 0u);
    ParameterPointQueues queues;
    queues.SetParameters(ids);

    // The value repeats the offset, so a torn point shows; even values are one writer's, odd ones the other's.
    auto const write = [&](int writer) {
        for (int number = writer; number < 2 * kPointsPerWriter; number += 2)
            queues.PushPoint(static_cast<ParamID>(number / 2 / 64) % kParameters, number, number);
    };
    std::vector<std::array<int, 2>> last(kParameters, {-1, -1});
    int torn = 0;
    int disordered = 0;
    auto const read = [&] {
        queues.TakeChanged([&](ParamID id, ParameterPoint const& point) {
            int& before = last[id][static_cast<std::size_t>(point.sampleOffset % 2)];
            torn += point.value != point.sampleOffset;
            disordered += point.sampleOffset <= before;
            before = point.sampleOffset;
        });
    };
    std::atomic<int> writing{2};
    std::thread first([&] { write(0), --writing; });
    std::thread second([&] { write(1), --writing; });
    while (writing > 0)
        read();
    first.join();
    second.join();
    for (int pass = 0; pass < 3; ++pass)
        read();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(disordered, 0);
    // What was pushed last of all stands at the end of its ring.
    ParamID const lastID = static_cast<ParamID>((kPointsPerWriter - 1) / 64) % kParameters;
    EXPECT_EQ(std::max(last[lastID][0], last[lastID][1]) / 2, kPointsPerWriter - 1);
}

// More writers than processors on one ring: some are held up inside a slot while the others go round the whole ring.
TEST(ParameterPointQueuesTest, WritersHeldUpInTheRingCostNobodyElseAPoint) {
    constexpr int kWriters = 8;
    constexpr int kPoints = 300'000;
    ParameterPointQueues queues;
    queues.SetParameters({1});
    std::vector<int> last(kWriters, -1);
    int faults = 0;
    auto const read = [&] {
        queues.TakeChanged([&](ParamID, ParameterPoint const& point) {
            int& before = last[static_cast<std::size_t>(point.sampleOffset % kWriters)];
            faults += point.value != point.sampleOffset || point.sampleOffset <= before;
            before = point.sampleOffset;
        });
    };
    std::atomic<int> writing{kWriters};
    std::vector<std::thread> writers;
    for (int writer = 0; writer < kWriters; ++writer)
        writers.emplace_back([&, writer] {
            for (int number = 0; number < kPoints; ++number)
                queues.PushPoint(1, number * kWriters + writer, number * kWriters + writer);
            --writing;
        });
    while (writing > 0)
        read();
    for (std::thread& writer : writers)
        writer.join();
    // All slots are free again: a full ring of points comes through whole.
    read();
    read();
    for (int number = 0; number < 100; ++number)
        queues.PushPoint(1, number, 0);
    EXPECT_EQ(PopAll(queues, 1).size(), 100u);
    EXPECT_EQ(faults, 0);
    EXPECT_THAT(last, testing::Contains(testing::Ge((kPoints - 1) * kWriters)));
}

} // namespace
