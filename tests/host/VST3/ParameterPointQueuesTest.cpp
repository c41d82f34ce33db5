#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"

#include "host/HostTest.h"
#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"

#include <atomic>
#include <numeric>
#include <thread>

namespace {

using namespace vynaudiofilterhost::vst3;
using Steinberg::Vst::ParamID;
using namespace vyntest;

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
        NoAllocationScope const guard;
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

// Writers and a reader at once, meant for the thread sanitizer as well: no point is torn, each writer's points come out
// in its order, and the last one of all is never lost, whatever was overwritten on the way.
void ExpectPointsToStayWholeAndInOrder(int writers, int pointsPerWriter, unsigned parameters) {
    std::vector<ParamID> ids(parameters);
    std::iota(ids.begin(), ids.end(), 0u);
    ParameterPointQueues queues;
    queues.SetParameters(ids);
    // The value repeats the offset, so a torn point shows; the offset tells whose it is.
    auto const idOf = [&](int number) { return static_cast<ParamID>(number / writers / 64) % parameters; };
    std::vector<std::vector<int>> last(parameters, std::vector<int>(static_cast<std::size_t>(writers), -1));
    int torn = 0;
    int disordered = 0;
    auto const read = [&] {
        queues.TakeChanged([&](ParamID id, ParameterPoint const& point) {
            int& before = last[id][static_cast<std::size_t>(point.sampleOffset % writers)];
            torn += point.value != point.sampleOffset;
            disordered += point.sampleOffset <= before;
            before = point.sampleOffset;
        });
    };
    int const end = writers * pointsPerWriter;
    std::atomic<int> writing{writers};
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            for (int number = writer; number < end; number += writers)
                queues.PushPoint(idOf(number), number, number);
            --writing;
        });
    while (writing > 0)
        read();
    for (std::thread& thread : threads)
        thread.join();
    for (int pass = 0; pass < 3; ++pass)
        read();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(disordered, 0);
    // What was pushed last of all stands at the end of its ring.
    EXPECT_THAT(last[idOf(end - 1)], testing::Contains(testing::Ge(end - writers)));
    // All slots are free again: a full ring of points comes through whole.
    for (int number = 0; number < 100; ++number)
        queues.PushPoint(0, number, 0);
    EXPECT_EQ(PopAll(queues, 0).size(), 100u);
}

TEST(ParameterPointQueuesTest, TenMillionPointsOfTwoWritersStayWholeAndInOrder) {
    ExpectPointsToStayWholeAndInOrder(2, 5'000'000, 70);
}

// More writers than processors on one ring: some are held up inside a slot while the others go round the whole ring.
TEST(ParameterPointQueuesTest, WritersHeldUpInTheRingCostNobodyElseAPoint) {
    ExpectPointsToStayWholeAndInOrder(8, 300'000, 1);
}

} // namespace
