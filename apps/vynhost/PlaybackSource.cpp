#include "vynhost/PlaybackSource.h"

#include "vynhost/AudioFileReader.h"
#include "vynhost/CommandError.h"
#include "vynhost/FoldedText.h"
#include "vynhost/MidiFile.h"
#include "vynhost/MidiPlayer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace vynhost {

namespace {

bool IsMidiFile(std::string const& path) {
    std::string const extension = Fold(std::filesystem::path(path).extension().string());
    return extension == Fold(".mid") || extension == Fold(".midi");
}

} // namespace

PlaybackSource::PlaybackSource(std::string path) : mPath(std::move(path)) {
    if (!IsMidiFile(mPath)) {
        AudioFileReader const look(mPath);
        return;
    }
    mSong = ReadMidiFile(mPath);
    if (mSong->seconds <= 0.0)
        throw CommandError::OfFile(mPath, "lasts no time: there is nothing to play");
}

void PlaybackSource::Prepare(int sampleRate) {
    if (mSampleRate == sampleRate)
        return;
    mSampleRate = 0;
    if (!mSong) {
        // Both at once may be more than there is memory for.
        mAudio.reset();
        mAudio.emplace(mPath, sampleRate);
    }
    mSampleRate = sampleRate;
}

std::int64_t PlaybackSource::GetLength() const {
    if (!mSong)
        return mAudio->GetSampleCount();
    auto const crowd = static_cast<std::int64_t>(mSong->messages.size()) / MidiPlayer::kMostMessages;
    return std::max<std::int64_t>(std::llround(mSong->seconds * mSampleRate) + 1 + crowd, mSampleRate);
}

} // namespace vynhost
