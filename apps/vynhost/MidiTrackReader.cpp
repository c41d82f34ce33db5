#include "vynhost/MidiTrackReader.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace vynhost {

namespace {

constexpr std::size_t kMostMessages = 10'000'000;
constexpr std::size_t kMostTempos = 1'000'000;

constexpr std::uint8_t kSystemExclusive = 0xF0;
constexpr std::uint8_t kEscape = 0xF7;
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kEndOfTrack = 0x2F;
constexpr std::uint8_t kSetTempo = 0x51;
constexpr std::uint8_t kTimeSignature = 0x58;

bool HasOneDataByte(std::uint8_t status) {
    return (status & 0xE0) == 0xC0;
}

MidiScoreMessage Normalize(MidiScoreMessage message) {
    constexpr std::uint8_t kUsualReleaseVelocity = 64;
    if ((message.status & 0xF0) == 0x90 && message.data2 == 0) {
        message.status = static_cast<std::uint8_t>(message.status & 0x8F);
        message.data2 = kUsualReleaseVelocity;
    }
    return message;
}

} // namespace

void MidiTrackReader::Read() {
    while (!mEnded) {
        if (mTrack.IsAtEnd())
            mTrack.Fail("the track has no end");
        mTick += mTrack.TakeVariable();
        ReadEvent();
    }
    if (!mTrack.IsAtEnd())
        mTrack.Fail("the track goes on behind its end");
    mScore.end = std::max(mScore.end, mTick);
}

void MidiTrackReader::ReadEvent() {
    std::uint8_t const first = mTrack.Peek();
    if (first < 0x80 && mRunningStatus == 0)
        mTrack.Fail("a message has no status");
    if (first < kSystemExclusive) {
        ReadMessage(first < 0x80 ? mRunningStatus : mTrack.TakeByte());
        return;
    }
    mRunningStatus = 0;
    mTrack.TakeByte();
    if (first == kMeta)
        ReadMeta();
    else if (first == kSystemExclusive || first == kEscape)
        mTrack.Take(mTrack.TakeVariable());
    else
        mTrack.Fail("a status that no file may hold: " + std::to_string(first));
}

void MidiTrackReader::ReadMeta() {
    std::uint8_t const type = mTrack.TakeByte();
    MidiBytes const content = mTrack.Take(mTrack.TakeVariable());
    if (type == kSetTempo)
        ReadTempo(content);
    if (type == kTimeSignature)
        ReadMeter(content);
    if (type == kEndOfTrack && !content.IsAtEnd())
        content.Fail("the end of the track holds something");
    mEnded = type == kEndOfTrack;
}

void MidiTrackReader::ReadTempo(MidiBytes content) {
    constexpr int kBytes = 3;
    if (content.GetLeft() != kBytes)
        content.Fail("a tempo of " + std::to_string(content.GetLeft()) + " bytes and not three");
    std::uint32_t const microseconds = content.TakeNumber(kBytes);
    if (microseconds == 0)
        content.Fail("a tempo of 0");
    if (mScore.tempos.size() == kMostTempos)
        content.Fail("there are more than " + std::to_string(kMostTempos) + " tempos");
    mScore.tempos.push_back({mTick, microseconds});
}

// No note depends on it, so one that makes no sense is passed over.
void MidiTrackReader::ReadMeter(MidiBytes content) {
    constexpr int kBytes = 4;
    constexpr int kMostHalvings = 6;
    if (content.GetLeft() != kBytes || mScore.meters.size() == kMostTempos)
        return;
    int const numerator = content.TakeByte();
    int const halvings = content.TakeByte();
    if (numerator > 0 && halvings <= kMostHalvings)
        mScore.meters.push_back({mTick, numerator, 1 << halvings});
}

void MidiTrackReader::ReadMessage(std::uint8_t status) {
    mRunningStatus = status;
    if (mScore.messages.size() == kMostMessages)
        mTrack.Fail("there are more than " + std::to_string(kMostMessages) + " messages");
    std::uint8_t const data1 = TakeData();
    std::uint8_t const data2 = HasOneDataByte(status) ? std::uint8_t{0} : TakeData();
    mScore.messages.push_back(Normalize({mTick, status, data1, data2}));
}

std::uint8_t MidiTrackReader::TakeData() {
    if (mTrack.Peek() >= 0x80)
        mTrack.Fail("a message is cut short by the next");
    return mTrack.TakeByte();
}

} // namespace vynhost
