#include "vynaudiofilterhost/VST/src/VSTSpeakerArrangement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

namespace vynaudiofilterhost::vst {

namespace {

struct Speaker {
    char const* name;
    std::int32_t type;
    float degrees; ///< azimuth
};

constexpr Speaker kMono{"M", 0, 90.0f};
constexpr Speaker kLeft{"L", 1, 120.0f};
constexpr Speaker kRight{"R", 2, 60.0f};
constexpr Speaker kCenter{"C", 3, 90.0f};
constexpr Speaker kLeftSurround{"Ls", 5, -160.0f};
constexpr Speaker kRightSurround{"Rs", 6, -20.0f};
constexpr Speaker kLeftOfCenter{"Lc", 7, -120.0f};
constexpr Speaker kRightOfCenter{"Rc", 8, 20.0f};

float Radians(float degrees) {
    float const pi = std::atan(1.0f) * 4.0f;
    return pi * degrees / 180.0f;
}

void SetName(VstSpeakerProperties& properties, std::string_view name) {
    std::size_t const length = std::min(name.size(), sizeof properties.name - 1);
    name.copy(properties.name, length);
    properties.name[length] = '\0';
}

void Fill(VstSpeakerProperties& properties, Speaker const& speaker) {
    properties.azimuth = Radians(speaker.degrees);
    properties.elevation = 0.0f;
    properties.radius = 1.0f;
    properties.type = speaker.type;
    SetName(properties, speaker.name);
}

// It has no direction: what effects are told are plain numbers.
void FillLowFrequency(VstSpeakerProperties& properties) {
    properties.azimuth = 10.0f;
    properties.elevation = 10.0f;
    properties.radius = 0.0f;
    properties.type = 4;
    SetName(properties, "Lfe");
}

void FillUserDefined(VstSpeakerArrangement& arrangement) {
    for (int index = 0; index < arrangement.numChannels; ++index)
        Fill(SpeakerAt(arrangement, index), {std::to_string(index + 1).c_str(), 0, 90.0f});
}

std::size_t BytesFor(int channels) {
    constexpr int kIncluded = 8;
    auto const further = static_cast<std::size_t>(std::max(channels - kIncluded, 0));
    return sizeof(VstSpeakerArrangement) + further * sizeof(VstSpeakerProperties);
}

SpeakerArrangementPointer Allocate(int channels) {
    void* const bytes = ::operator new(BytesFor(channels));
    std::memset(bytes, 0, BytesFor(channels));
    SpeakerArrangementPointer arrangement(static_cast<VstSpeakerArrangement*>(bytes));
    arrangement->numChannels = channels;
    return arrangement;
}

} // namespace

void DeleteSpeakerArrangement::operator()(VstSpeakerArrangement* arrangement) const noexcept {
    ::operator delete(arrangement);
}

VstSpeakerProperties& SpeakerAt(VstSpeakerArrangement& arrangement, int index) {
    unsigned char* const first =
        reinterpret_cast<unsigned char*>(&arrangement) + offsetof(VstSpeakerArrangement, speakers);
    return reinterpret_cast<VstSpeakerProperties*>(first)[index];
}

void FillSurround51Arrangement(VstSpeakerArrangement* arrangement) {
    Fill(arrangement->speakers[0], kLeft);
    Fill(arrangement->speakers[1], kRight);
    Fill(arrangement->speakers[2], kCenter);
    FillLowFrequency(arrangement->speakers[3]);
    Fill(arrangement->speakers[4], kLeftSurround);
    Fill(arrangement->speakers[5], kRightSurround);
}

SpeakerArrangementPointer BuildSpeakerArrangement(vynmediatypes::AudioChannelLayout const& layout) {
    if (layout.empty())
        return nullptr;
    SpeakerArrangementPointer arrangement = Allocate(static_cast<int>(layout.size()));
    switch (arrangement->numChannels) {
    case 1:
        arrangement->type = kSpeakerArrMono;
        Fill(arrangement->speakers[0], kMono);
        break;
    case 2:
        arrangement->type = kSpeakerArrStereo;
        Fill(arrangement->speakers[0], kLeft);
        Fill(arrangement->speakers[1], kRight);
        break;
    case 6:
        arrangement->type = kSpeakerArr51;
        FillSurround51Arrangement(arrangement.get());
        break;
    case 8:
        arrangement->type = kSpeakerArr71Music;
        FillSurround51Arrangement(arrangement.get());
        Fill(arrangement->speakers[6], kLeftOfCenter);
        Fill(arrangement->speakers[7], kRightOfCenter);
        break;
    default:
        arrangement->type = kSpeakerArrUserDefined;
        FillUserDefined(*arrangement);
    }
    return arrangement;
}

SpeakerArrangementPointer CopySpeakerArrangement(VstSpeakerArrangement const& arrangement) {
    SpeakerArrangementPointer copy = Allocate(std::max(arrangement.numChannels, 0));
    copy->type = arrangement.type;
    constexpr std::size_t kHead = offsetof(VstSpeakerArrangement, speakers);
    std::memcpy(reinterpret_cast<unsigned char*>(copy.get()) + kHead,
                reinterpret_cast<unsigned char const*>(&arrangement) + kHead,
                static_cast<std::size_t>(copy->numChannels) * sizeof(VstSpeakerProperties));
    return copy;
}

} // namespace vynaudiofilterhost::vst
