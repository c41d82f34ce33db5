// Writes four seconds of a plucked arpeggio as a stereo WAV file; every run writes the same bytes.

#include <sndfile.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr int kSampleRate = 48000;
constexpr int kChannels = 2;
constexpr std::size_t kFrames = 4 * kSampleRate;
constexpr std::size_t kNoteDistance = kSampleRate / 4;

// Uniform noise in -1..1 that is the same on every machine.
class Noise {
public:
    float Next() {
        mState = mState * 1664525U + 1013904223U;
        return static_cast<float>(mState >> 8) / 8388608.0f - 1.0f;
    }

private:
    std::uint32_t mState = 1;
};

// A string as a delay line of one period: plucking fills it with noise, each pass round it loses the highs.
void AddPluck(std::vector<float>& frames, std::size_t start, double frequency, float pan, Noise& noise) {
    std::vector<float> line(static_cast<std::size_t>(std::lround(kSampleRate / frequency)));
    for (float& sample : line)
        sample = noise.Next();

    std::size_t position = 0;
    for (std::size_t frame = start; frame < kFrames; ++frame) {
        std::size_t const next = (position + 1) % line.size();
        float const sample = 0.6f * line[position];
        frames[kChannels * frame] += sample * (1.0f - pan);
        frames[kChannels * frame + 1] += sample * pan;
        line[position] = 0.498f * (line[position] + line[next]);
        position = next;
    }
}

std::vector<float> MakeArpeggio() {
    constexpr std::array kNotes{220.00, 261.63, 329.63, 440.00, 523.25, 440.00, 329.63, 261.63};
    std::vector<float> frames(kChannels * kFrames);
    Noise noise;
    for (std::size_t note = 0; note < kNotes.size(); ++note) {
        float const pan = static_cast<float>(note + 1) / static_cast<float>(kNotes.size() + 1);
        AddPluck(frames, note * kNoteDistance, kNotes[note], pan, noise);
    }
    return frames;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_tone OUT.wav\n");
        return 2;
    }
    SF_INFO info{};
    info.samplerate = kSampleRate;
    info.channels = kChannels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* file = sf_open(argv[1], SFM_WRITE, &info);
    if (!file) {
        std::fprintf(stderr, "make_tone: %s: %s\n", argv[1], sf_strerror(nullptr));
        return 1;
    }
    bool const written = sf_writef_float(file, MakeArpeggio().data(), kFrames) == kFrames;
    if (sf_close(file) != 0 || !written) {
        std::fprintf(stderr, "make_tone: %s: could not be written whole\n", argv[1]);
        return 1;
    }
    return 0;
}
