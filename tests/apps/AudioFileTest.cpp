#include "apps/AudioFiles.h"
#include "support/TemporaryFolder.h"
#include "vynhost/AudioFileReader.h"
#include "vynhost/AudioFileWriter.h"
#include "vynhost/CommandError.h"
#include "vynhost/LevelMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace vynhost;
using namespace vyntest;
namespace fs = std::filesystem;

namespace {

// Copies a file through reader and writer in uneven stretches.
void CopyAudio(fs::path const& from, fs::path const& to) {
    AudioFileReader reader(from);
    AudioFileWriter writer(to, ChooseWavFormat(reader.GetFormat(), reader.GetFormat().channels), 0);
    std::vector<std::vector<float>> buffers(static_cast<std::size_t>(reader.GetFormat().channels),
                                            std::vector<float>(100));
    std::vector<float*> channels;
    for (auto& buffer : buffers)
        channels.push_back(buffer.data());
    for (std::int64_t rest = reader.GetSampleCount(); rest > 0;) {
        int const samples = static_cast<int>(std::min<std::int64_t>(rest, 100));
        reader.Read(channels.data(), samples);
        writer.Write(channels.data(), samples);
        rest -= samples;
    }
    writer.Commit();
}

TEST(AudioFileTest, WrittenAudioKeepsItsSamplesAndTheirFormat) {
    struct Case {
        int format, channels, written;
    };
    TemporaryFolder const folder;
    constexpr int kWav = SF_FORMAT_WAV, kWavex = SF_FORMAT_WAVEX, k16 = SF_FORMAT_PCM_16, k24 = SF_FORMAT_PCM_24;
    std::vector<Case> cases{{kWav | k16, 6, kWavex | k16},
                            {kWavex | k24, 2, kWavex | k24},
                            {SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 1, kWav | SF_FORMAT_PCM_U8},
                            {SF_FORMAT_FLAC | k24, 2, kWav | k24}};
    for (int const samples :
         {int{SF_FORMAT_PCM_U8}, k16, k24, int{SF_FORMAT_PCM_32}, int{SF_FORMAT_FLOAT}, int{SF_FORMAT_DOUBLE}})
        cases.push_back({kWav | samples, 2, kWav | samples});
    for (Case const& one : cases) {
        AudioClip clip = MakeNoise(one.channels, 1234);
        clip.format = one.format;
        WriteClip(folder.Path() / "in", clip);
        CopyAudio(folder.Path() / "in", folder.Path() / "out");
        AudioClip const copy = ReadClip(folder.Path() / "out");
        EXPECT_EQ(copy.format, one.written);
        EXPECT_EQ(copy.samples, ReadClip(folder.Path() / "in").samples) << std::hex << one.format;
        // Equal audio gives equal bytes: the time of writing would be in a chunk of peaks.
        EXPECT_EQ(ReadText(folder.Path() / "out").find("PEAK"), std::string::npos);
    }
}

TEST(AudioFileTest, WholeNumbersAreRoundedAndClipped) {
    TemporaryFolder const folder;
    std::array<float, 6> samples{1.5F, -1.5F, 1.0F, -1.0F, 0.6F / 32768, -1.4F / 32768};
    float const* const channels[] = {samples.data()};
    AudioFileWriter writer(folder.Path() / "out", {1, 48000, SF_FORMAT_WAV | SF_FORMAT_PCM_16, {}}, 6);
    writer.Write(channels, 6);
    writer.Commit();
    EXPECT_EQ(writer.GetClippedCount(), 3);
    float const most = 32767.0F / 32768;
    EXPECT_EQ(ReadClip(folder.Path() / "out").samples,
              (std::vector<float>{most, -1, most, -1, 1.0F / 32768, -1.0F / 32768}));
}

TEST(AudioFileTest, FilesThatHoldLessThanTheyPromiseAreRefused) {
    TemporaryFolder const folder;
    fs::path const path = folder.Path() / "in";
    for (int const type : {SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64, SF_FORMAT_FLAC, SF_FORMAT_AIFF, SF_FORMAT_AU,
                           SF_FORMAT_W64, SF_FORMAT_CAF}) {
        AudioClip clip = MakeNoise(2, 40000);
        clip.format = type | SF_FORMAT_PCM_16;
        WriteClip(path, clip);
        CopyAudio(path, folder.Path() / "out");
        fs::resize_file(path, fs::file_size(path) - 1000);
        EXPECT_THROW(CopyAudio(path, folder.Path() / "other"), CommandError) << std::hex << type;
        EXPECT_FALSE(fs::exists(folder.Path() / "other"));
    }
}

TEST(LevelMeterTest, LevelsAreOfAllFiniteSamples) {
    std::array<float, 5> samples{3.0F, -4.0F, 0.0F, std::numeric_limits<float>::quiet_NaN(),
                                 -std::numeric_limits<float>::infinity()};
    LevelMeter meter;
    EXPECT_EQ(meter.GetRMS(), 0.0);
    meter.Add(samples);
    EXPECT_EQ(meter.GetPeak(), 4.0);
    EXPECT_DOUBLE_EQ(meter.GetRMS(), std::sqrt(5.0));
    EXPECT_EQ(meter.GetNonFiniteCount(), 2);
    EXPECT_EQ(samples[3], 0.0F);
}

} // namespace
