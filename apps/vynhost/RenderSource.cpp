#include "vynhost/RenderSource.h"

#include "vynhost/CommandError.h"
#include "vynhost/MidiSong.h"
#include "vynhost/RenderCommand.h"
#include "vynhost/TrackLayout.h"

#include <algorithm>
#include <cmath>
#include <sndfile.h>
#include <span>

namespace vynhost {

RenderSource::RenderSource(RenderRequest const& request, MidiSong const& song) {
    if (request.inputPath) {
        mFile.emplace(*request.inputPath);
        mFormat = mFile->GetFormat();
        mSampleCount = mFile->GetSampleCount();
    } else {
        mFormat = {0, request.sampleRate, SF_FORMAT_WAV | SF_FORMAT_FLOAT, {}};
    }
    mSampleCount = std::max<std::int64_t>(mSampleCount, std::llround(song.seconds * mFormat.sampleRate));
    if (mSampleCount == 0)
        throw CommandError::OfFile(request.midiPath.value_or(""), "lasts no time: there is nothing to render");
    if (request.sideChainPath)
        mSideChain.emplace(*request.sideChainPath, mFormat);
}

vynmediatypes::AudioChannelLayout RenderSource::GetSideChainLayout() const {
    return mSideChain ? LayoutOfFile(mSideChain->GetFormat()) : vynmediatypes::AudioChannelLayout();
}

void RenderSource::Read(float* const* channels, int mainChannels, int samples) {
    ReadMain(channels, mainChannels, samples);
    if (mSideChain)
        mSideChain->Read(channels + mainChannels, samples);
    mPosition += samples;
}

void RenderSource::ReadMain(float* const* channels, int mainChannels, int samples) {
    std::int64_t const left = mFile ? mFile->GetSampleCount() - mPosition : 0;
    auto const present = static_cast<std::size_t>(std::clamp<std::int64_t>(left, 0, samples));
    if (present > 0)
        mFile->Read(channels, static_cast<int>(present));
    for (float* channel : std::span(channels, static_cast<std::size_t>(mainChannels))) {
        mMeter.Add({channel, present});
        std::fill(channel + present, channel + samples, 0.0f);
    }
}

std::vector<std::string> RenderSource::Describe() const {
    std::vector<std::string> notes;
    if (mSideChain)
        notes = mSideChain->Describe(mSampleCount);
    if (mMeter.GetNonFiniteCount() > 0)
        notes.push_back(std::to_string(mMeter.GetNonFiniteCount()) +
                        " samples of the file are not finite (NaN or infinite) and were taken as 0");
    return notes;
}

} // namespace vynhost
