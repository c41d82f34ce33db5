#include "host/HostTest.h"
#include "support/CallLoop.h"
#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/ModuleUITimer.h"

#include <array>
#include <atomic>
#include <functional>
#include <list>
#include <optional>
#include <thread>

namespace {

using namespace vyntest;

/// Answers every bus request as told and keeps what it is given.
class FakeFilter : public AudioFilter {
public:
    FakeFilter() : AudioFilter(u"fake", u"Fake") {}
    ~FakeFilter() override {
        if (onDestruction)
            onDestruction();
    }

    void Process(float** in, float**, int, ChannelFlags inFlags, ChannelFlags& outFlags) override {
        inputs.assign(in, in + GetNumberOfInputChannels());
        flags = inFlags;
        outFlags.Set(1);
    }

    void RequestIOConfiguration(Layouts const& in, Layouts const& out) override {
        ++requests;
        ClearBusConfiguration();
        if (refuse && requests == 1)
            return;
        for (auto const& layout : in)
            AddInputBus(AudioBusDescription(u"In", layout, AudioBusDescription::kTypeMain));
        for (auto const& layout : answer.value_or(out))
            AddOutputBus(AudioBusDescription(u"Out", layout, AudioBusDescription::kTypeMain));
    }

    void SetParameter(int index, float newValue) override {
        AudioFilter::SetParameter(index, newValue);
        value = newValue;
    }

    void OnUITimerTick() override {
        ++ticks;
        AudioFilter::OnUITimerTick();
    }

    void FlushMessageQueue() override {
        ++flushes;
        AudioFilter::FlushMessageQueue();
    }

    int GetParameterCount() const override { return 3; }
    float GetParameter(int index) const override { return static_cast<float>(index) + 0.25f; }
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override {
        return index < 2 ? infos[static_cast<std::size_t>(index)] : nullptr;
    }

    using AudioFilter::AddInputBuses;
    using AudioFilter::IsChannelFormatSupported;
    using AudioFilter::PostSetParameter;
    using AudioFilter::SaveParams;

    std::function<void()> onDestruction;
    std::vector<float*> inputs;
    ChannelFlags flags;
    float value = 0.0f;
    std::array<boost::intrusive_ptr<AudioFilterParameterInfo>, 2> infos;
    std::optional<Layouts> answer; ///< output layouts, whatever is asked for
    int flushes = 0;
    int requests = 0;
    int ticks = 0;
    bool refuse = false;
};

class AudioFilterTest : public testing::Test {
protected:
    void SetUp() override { SetMainThreadToCurrentThread(); }

    void MakeStereoAndResume() {
        mFilter->SetBlockSize(64);
        mFilter->RequestBusConfiguration(Buses({2}), Buses({2}));
        mFilter->Resume();
    }

    boost::intrusive_ptr<FakeFilter> mFilter{new FakeFilter};
};

TEST_F(AudioFilterTest, StartsSuspendedAndAnswersWithTheDefaults) {
    AudioFilter filter(u"id", u"name");
    EXPECT_TRUE(filter.IsSuspended());
    EXPECT_EQ(filter.GetRenderingContext(), kRenderingContextRealTime);
    EXPECT_EQ(filter.GetMaxProcessingBlockSize(), 2147483647);
    EXPECT_TRUE(filter.RequiresSymmetricIO());
    filter.SetCurrentDuration(7.0);
    EXPECT_EQ(filter.GetProcessedDuration(), 7.0);
    EXPECT_EQ(filter.GetOriginalPosition(3.5), 3.5);
    EXPECT_EQ(filter.GetProcessedScale(), 1.0);
    float sample = 0.25f;
    float* channels[] = {&sample};
    ChannelFlags outFlags;
    filter.Process(channels, channels, 1, ChannelFlags(), outFlags);
    EXPECT_EQ(outFlags.GetBits(), ~std::uint64_t{0});
    EXPECT_EQ(sample, 0.25f);
}

TEST_F(AudioFilterTest, SilentChannelsReachTheFilterAsSilence) {
    MakeStereoAndResume();
    std::array<float, 64> noise;
    noise.fill(1.0f);
    float* in[] = {noise.data(), noise.data()};
    float* out[] = {noise.data(), noise.data()};
    ChannelFlags inFlags;
    inFlags.Set(1);
    ChannelFlags outFlags;
    {
        mFilter->inputs.reserve(2);
        NoAllocationScope const guard;
        mFilter->ProcessWithMapping(in, out, 64, inFlags, outFlags);
    }
    EXPECT_EQ(mFilter->inputs[0], noise.data());
    EXPECT_NE(mFilter->inputs[1], noise.data());
    EXPECT_THAT(std::vector(mFilter->inputs[1], mFilter->inputs[1] + 64), Each(0.0f));
    EXPECT_EQ(mFilter->flags.GetBits(), ~std::uint64_t{1});
    EXPECT_EQ(outFlags.GetBits(), 2u);
    mFilter->Suspend();
}

TEST_F(AudioFilterTest, PostedValueWaitsForTheNextBlockOnlyWhileTheFilterRuns) {
    mFilter->PostSetParameter(0, 0.25f);
    EXPECT_EQ(mFilter->value, 0.25f);
    MakeStereoAndResume();
    mFilter->PostSetParameter(0, 0.75f);
    EXPECT_EQ(mFilter->value, 0.25f);
    std::array<float, 64> buffer{};
    float* channels[] = {buffer.data(), buffer.data()};
    ChannelFlags outFlags;
    mFilter->ProcessWithMapping(channels, channels, 64, ChannelFlags(), outFlags);
    EXPECT_EQ(mFilter->value, 0.75f);
    EXPECT_EQ(mFilter->GetReferenceCount(), 2); // the finished message holds one until it is purged
    mFilter->Suspend();
    EXPECT_EQ(mFilter->GetReferenceCount(), 1);
    EXPECT_EQ(mFilter->GetParameterDirtyCount(), 2);
}

TEST_F(AudioFilterTest, TickMayEndTheFilterWithItsLastMessage) {
    MakeStereoAndResume();
    bool gone = false;
    mFilter->onDestruction = [&gone] { gone = true; };
    mFilter->PostSetParameter(0, 0.5f);
    float* channels[] = {nullptr, nullptr};
    ChannelFlags outFlags;
    mFilter->ProcessWithMapping(channels, channels, 0, ChannelFlags(), outFlags);
    mFilter.reset();
    EXPECT_FALSE(gone);
    EXPECT_TRUE(RunCallsUntil([&gone] { return gone; }));
}

TEST_F(AudioFilterTest, SuspendedStateIsAnnouncedAfterTheQueueIsFlushed) {
    std::vector<bool> states;
    mFilter->ConnectSuspendedStateChanged([&](bool suspended) {
        EXPECT_EQ(mFilter->IsSuspended(), suspended);
        EXPECT_EQ(mFilter->value, suspended ? 0.5f : 0.0f);
        states.push_back(suspended);
    });
    MakeStereoAndResume();
    mFilter->PostSetParameter(0, 0.5f);
    mFilter->Suspend();
    EXPECT_THAT(states, ElementsAre(false, true));
    int const before = mFilter->flushes;
    mFilter->PostSetParameter(0, 0.75f);
    AudioFilter::Clone(mFilter);
    EXPECT_EQ(mFilter->flushes, before + 2) << "a subclass flushes more than the queue";
}

TEST_F(AudioFilterTest, TimerReferencesAreTakenAndGivenBackInAnyOrder) {
    mFilter->EditorDetached();
    mFilter->EditorAttached();
    EXPECT_EQ(mFilter->ticks, 1);
    mFilter->EditorAttached();
    EXPECT_EQ(mFilter->ticks, 1);
    mFilter->EditorDetached();
    mFilter->Resume();
    mFilter->Suspend();
    EXPECT_EQ(mFilter->ticks, 1); // the editor's reference held the connection all the time
    mFilter->Suspend();           // lowers the count of the editor that is still open
    mFilter->Resume();
    EXPECT_EQ(mFilter->ticks, 2);
    mFilter->Suspend();
    std::thread([this] { mFilter->Resume(); }).join();
    EXPECT_EQ(mFilter->ticks, 2);
    mFilter->Suspend();
    mFilter->Resume();
    std::thread([this] { mFilter->Suspend(); }).join();
    mFilter->EditorAttached(); // the reference of the Resume before is still there
    EXPECT_EQ(mFilter->ticks, 3);
    mFilter->EditorDetached();
    mFilter->EditorDetached();
}

TEST_F(AudioFilterTest, RefusedBusRequestBringsTheFormerBusesBackUnheard) {
    mFilter->RequestBusConfiguration(Buses({2}), Buses({2}));
    int changes = 0;
    mFilter->ConnectBusConfigurationChanged([&] { ++changes; });
    auto const before = mFilter->GetInputBuses();
    mFilter->refuse = true;
    mFilter->requests = 0;
    mFilter->RequestBusConfiguration({}, Buses({2}));
    EXPECT_EQ(mFilter->requests, 2);
    EXPECT_EQ(mFilter->GetInputBuses(), before);
    EXPECT_EQ(changes, 0);
    mFilter->RequestBusConfiguration(Buses({1}), {});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(mFilter->GetNumberOfInputChannels(), 1);
}

TEST_F(AudioFilterTest, ChannelFormatCountsChannelsAndNotLabels) {
    auto const stereo = vynmediatypes::CreateStereoChannelLayout();
    EXPECT_TRUE(mFilter->IsChannelFormatSupported(stereo));
    EXPECT_FALSE(mFilter->CanUseSideChaining());
    EXPECT_TRUE(mFilter->IsChannelFormatSupported(mFilter->GetInputBuses().front().GetLayout()));
    mFilter->answer = AudioFilter::Layouts{vynmediatypes::AudioChannelLayout(2)};
    EXPECT_TRUE(mFilter->IsChannelFormatSupported(stereo)) << "other labels";
    mFilter->answer = AudioFilter::Layouts{stereo, stereo};
    EXPECT_FALSE(mFilter->IsChannelFormatSupported(stereo)) << "two output buses";
    mFilter->answer = AudioFilter::Layouts{vynmediatypes::CreateMonoChannelLayout()};
    EXPECT_FALSE(mFilter->IsChannelFormatSupported(stereo)) << "fewer channels";
    mFilter->answer.reset();
    EXPECT_FALSE(mFilter->IsChannelFormatSupported({}));
    mFilter->AddInputBuses(mFilter->GetInputBuses());
    EXPECT_EQ(mFilter->GetInputBuses().size(), 2u);
    EXPECT_TRUE(mFilter->CanUseSideChaining());
}

TEST_F(AudioFilterTest, GesturesFireOnceAndPassNegativeIndicesThrough) {
    std::vector<std::pair<int, bool>> heard;
    mFilter->ConnectEditingStateChange([&](int index, bool editing) { heard.emplace_back(index, editing); });
    mFilter->EndEditing(3);
    mFilter->BeginEditing(2);
    mFilter->BeginEditing(2);
    EXPECT_TRUE(mFilter->IsEditing(2));
    mFilter->EndEditing(2);
    mFilter->BeginEditing(-1);
    mFilter->BeginEditing(-1);
    EXPECT_FALSE(mFilter->IsEditing(-1));
    EXPECT_THAT(heard, ElementsAre(std::pair(2, true), std::pair(2, false), std::pair(-1, true), std::pair(-1, true)));
}

// Plug-ins report gestures on threads of their own; meant for the thread sanitizer.
TEST_F(AudioFilterTest, GesturesMayComeFromSeveralThreads) {
    auto const gesture = [this](int first) {
        for (int index = first; index < 2000; index += 2) {
            mFilter->BeginEditing(index);
            mFilter->EndEditing(index);
        }
    };
    std::thread other(gesture, 1);
    gesture(0);
    other.join();
    EXPECT_FALSE(mFilter->IsEditing(1999));
    // Of two threads with one and the same news only one is heard.
    std::atomic<int> heard{0};
    mFilter->ConnectEditingStateChange([&](int, bool) { ++heard; });
    for (int index = 0; index < 2000; ++index) {
        std::thread another([&] { mFilter->BeginEditing(index); });
        mFilter->BeginEditing(index);
        another.join();
    }
    EXPECT_EQ(heard, 2000);
}

// The filter is suspended as any other, and nothing waits in it.
TEST_F(AudioFilterTest, MessageThatThrowsDoesNotStopASuspension) {
    struct Throwing : Message {
        bool ExecuteOnProcessThread() override { throw 1; }
    };
    struct Counting : Message {
        bool ExecuteOnProcessThread() override { return ++count, true; }
        int count = 0;
    };
    boost::intrusive_ptr<Counting> const last(new Counting);
    std::vector<bool> heard;
    mFilter->Resume();
    mFilter->ConnectSuspendedStateChanged([&](bool suspended) { heard.push_back(suspended); });
    mFilter->Post(new Throwing);
    mFilter->Post(new Throwing);
    mFilter->Post(last);
    EXPECT_THROW(mFilter->Suspend(), int);
    EXPECT_TRUE(mFilter->IsSuspended());
    EXPECT_THAT(heard, ElementsAre(true));
    EXPECT_EQ(last->count, 1);
}

TEST_F(AudioFilterTest, ListOfParametersHoldsZeroForWhatIsNotPersisted) {
    class Info : public AudioFilterParameterInfo {
        float ToNormalized(float displayValue) const override { return displayValue; }
        float FromNormalized(float normalized) const override { return normalized; }
        vyncore::UString GetParameterString(float) const override { return {}; }
    };
    mFilter->infos = {new Info, new Info};
    mFilter->infos[0]->SetIsPersisted(false);
    std::list<float> values = {9.0f};
    mFilter->SaveParams(values);
    EXPECT_THAT(values, ElementsAre(0.0f, 1.25f, 2.25f));
    EXPECT_EQ(mFilter->GetParameterString(1), u"1.25");
}

} // namespace
