#include "apps/AudioFiles.h"
#include "apps/JackListener.h"
#include "apps/MidiFiles.h"
#include "fakes/PlayedFilter.h"
#include "support/JackServer.h"
#include "support/TemporaryFolder.h"
#include "vynhost/CommandError.h"
#include "vynhost/EditPlayback.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

using namespace vyntest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vynhost::EditPlayback;

namespace {

// A file of a steady level, so that whatever stretch of it is heard tells the filter's gain.
class JackTest : public testing::Test {
protected:
    void SetUp() override {
        if (std::string const obstacle = JackServer::FindObstacle(); !obstacle.empty())
            GTEST_SKIP() << obstacle;
    }

    std::string WriteLevel(int channels, int sampleRate = 44100) const {
        AudioClip clip =
            MakeClip(channels, 44100, [](std::size_t, std::size_t channel) { return channel == 0 ? 0.5F : 0.25F; });
        clip.sampleRate = sampleRate;
        std::string const path = mFolder.Path() / "level.wav";
        WriteClip(path, clip);
        return path;
    }

    // What the main loop does, until the condition holds; false after ten seconds.
    static bool AttendUntil(EditPlayback& playback, JackListener& listener, std::function<bool()> const& holds) {
        for (int turn = 0; turn < 100 && !holds(); ++turn) {
            playback.Attend();
            listener.Hears(0, 0.5F);
        }
        return holds();
    }

    TemporaryFolder mFolder;
    boost::intrusive_ptr<PlayedFilter> mFilter{new PlayedFilter(2, 2)};
};

TEST_F(JackTest, SoundGoesOutThroughTheFilterWithTheParametersOfTheMoment) {
    JackServer const server;
    JackListener listener;
    EditPlayback playback(*mFilter, WriteLevel(2));
    playback.Start();
    ASSERT_TRUE(playback.IsPlaying());
    EXPECT_THAT(playback.TakeNotes(), IsEmpty());
    EXPECT_EQ(mFilter->GetSampleRate(), 44100.0F);
    EXPECT_EQ(mFilter->GetBlockSize(), 512);
    EXPECT_TRUE(listener.Hears(0, 0.5F));
    EXPECT_TRUE(listener.Hears(1, 0.25F));
    mFilter->SetParameter(0, 0.5F);
    EXPECT_TRUE(listener.Hears(0, 0.25F));
    playback.Stop();
    EXPECT_TRUE(mFilter->IsSuspended());
    EXPECT_FALSE(playback.IsPlaying());
    EXPECT_TRUE(listener.Hears(0, 0.0F));
}

TEST_F(JackTest, OutputsLeadToTheSoundCard) {
    JackServer const server;
    JackListener listener;
    for (int const channels : {1, 2}) {
        mFilter = new PlayedFilter(channels, channels);
        EditPlayback playback(*mFilter, WriteLevel(channels));
        playback.Start();
        EXPECT_TRUE(listener.Sees("system:playback_1", {"vynhost:out_1"}));
        EXPECT_TRUE(listener.Sees("system:playback_2", {channels == 1 ? "vynhost:out_1" : "vynhost:out_2"}));
    }
}

TEST_F(JackTest, FileOfAnotherRateSoundsTheSame) {
    JackServer const server;
    JackListener listener;
    EditPlayback playback(*mFilter, WriteLevel(1, 48000));
    playback.Start();
    EXPECT_THAT(playback.TakeNotes(), ElementsAre(HasSubstr("mono file fed to both channels")));
    EXPECT_TRUE(listener.Hears(0, 0.5F));
    EXPECT_TRUE(listener.Hears(1, 0.5F));
}

TEST_F(JackTest, OtherBlockSizeOfTheServerStartsTheFilterAnew) {
    JackServer const server;
    JackListener listener;
    EditPlayback playback(*mFilter, WriteLevel(2));
    playback.Start();
    for (int const size : {2048, 64}) {
        ASSERT_EQ(jack_set_buffer_size(listener.GetClient(), static_cast<jack_nframes_t>(size)), 0);
        EXPECT_TRUE(AttendUntil(playback, listener, [&] { return mFilter->GetBlockSize() == size; }));
        EXPECT_TRUE(listener.Hears(0, 0.5F));
        EXPECT_TRUE(playback.IsPlaying());
    }
    EXPECT_EQ(mFilter->longestBlock, 2048);
    EXPECT_THAT(playback.TakeNotes(), IsEmpty());
}

TEST_F(JackTest, LatencyThatShowsLateIsTakenUpOnce) {
    JackServer const server;
    JackListener listener;
    EditPlayback playback(*mFilter, WriteLevel(2));
    mFilter->lateLatency = 100;
    playback.Start();
    EXPECT_TRUE(AttendUntil(playback, listener, [&] { return mFilter->starts == 2; }));
    for (int turn = 0; turn < 100; ++turn) {
        playback.Attend();
        EXPECT_TRUE(listener.Hears(0, 0.5F));
    }
    EXPECT_EQ(mFilter->starts, 2);
}

TEST_F(JackTest, SilencedSoundIsNotedAtOnceAndCountedAtTheEnd) {
    JackServer const server;
    JackListener listener;
    EditPlayback playback(*mFilter, WriteLevel(2));
    mFilter->spoiledSample = 0;
    playback.Start();
    std::vector<std::string> notes;
    EXPECT_TRUE(AttendUntil(playback, listener, [&] {
        std::ranges::move(playback.TakeNotes(), std::back_inserter(notes));
        return !notes.empty();
    }));
    EXPECT_THAT(notes, ElementsAre(HasSubstr("beyond +60 dB: it is silenced")));
    playback.Finish();
    EXPECT_THAT(playback.TakeNotes(), ElementsAre(HasSubstr("beyond +60 dB silenced")));
}

TEST_F(JackTest, ServerThatIsKilledLeavesAFilterWithoutSound) {
    JackServer server;
    EditPlayback playback(*mFilter, WriteLevel(2));
    playback.Start();
    server.Kill();
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (playback.IsPlaying() && std::chrono::steady_clock::now() < deadline)
        playback.Attend();
    EXPECT_FALSE(playback.IsPlaying());
    EXPECT_TRUE(mFilter->IsSuspended());
    EXPECT_THAT(playback.TakeNotes(),
                ElementsAre("the JACK server has ended, or has let go of vynhost; editing without sound"));
}

TEST_F(JackTest, WithoutServerThereIsANoteAndNoSound) {
    NoJackServer const none;
    EditPlayback playback(*mFilter, WriteLevel(2));
    for (int time = 0; time < 2; ++time) {
        playback.Start();
        playback.Attend();
        EXPECT_FALSE(playback.IsPlaying());
        EXPECT_TRUE(mFilter->IsSuspended());
    }
    EXPECT_THAT(playback.TakeNotes(), ElementsAre("no JACK server runs; editing without sound"));
}

TEST_F(JackTest, FilterThatCannotBeResumedIsLeftSuspended) {
    JackServer const server;
    EditPlayback playback(*mFilter, WriteLevel(2));
    mFilter->throwsAtResume = true;
    EXPECT_THROW(playback.Start(), std::runtime_error);
    EXPECT_FALSE(playback.IsPlaying());
    EXPECT_TRUE(mFilter->IsSuspended());
    EXPECT_EQ(mFilter->GetAudioFilterHost(), nullptr);
}

TEST_F(JackTest, FileIsLookedAtAtOnce) {
    mFolder.AddFile("noise.wav", "noise");
    mFolder.AddFile("song.MID", "noise");
    EXPECT_THROW(EditPlayback(*mFilter, mFolder.Path() / "noise.wav"), vynhost::CommandError);
    EXPECT_THROW(EditPlayback(*mFilter, mFolder.Path() / "song.MID"), vynhost::CommandError);
    EXPECT_THROW(EditPlayback(*mFilter, mFolder.Path() / "missing.wav"), vynhost::CommandError);
    std::string const song =
        WriteMidi(mFolder.Path() / "song.mid", MidiFileText(100, {MidiTrack({0, 0x90, 60, 1}, 9)}));
    EXPECT_THROW(EditPlayback(*mFilter, song), std::runtime_error);
    mFilter = new PlayedFilter(0, 2);
    EXPECT_NO_THROW(EditPlayback(*mFilter, song));
}

} // namespace
