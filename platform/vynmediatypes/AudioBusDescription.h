#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioChannelLayout.h"

#include <cstdint>
#include <utility>

namespace vynmediatypes {

/// One bus of a filter or of a track: what it is called, its channels in order, and what it is for. A plain value.
class VYN_API AudioBusDescription {
public:
    enum Type : std::int32_t { kTypeMain = 0, kTypeSideChain = 1 };

    /// A main bus without a name and without channels.
    /// [any-thread]
    AudioBusDescription() = default;

    /// [any-thread]
    AudioBusDescription(vyncore::UString name, AudioChannelLayout layout, Type type)
        : mName(std::move(name)), mLayout(std::move(layout)), mType(type) {}

    /// [any-thread]
    static AudioBusDescription CreateMono(vyncore::UString name, Type type);

    /// [any-thread]
    static AudioBusDescription CreateStereo(vyncore::UString name, Type type);

    /// [any-thread]
    static AudioBusDescription CreateSurround51(vyncore::UString name, Type type);

    /// [any-thread]
    vyncore::UString const& GetName() const noexcept { return mName; }

    /// [any-thread]
    void SetName(vyncore::UString name) { mName = std::move(name); }

    /// [any-thread]
    AudioChannelLayout const& GetLayout() const noexcept { return mLayout; }

    /// [any-thread]
    void SetLayout(AudioChannelLayout layout) { mLayout = std::move(layout); }

    /// [any-thread]
    Type GetType() const noexcept { return mType; }

    /// [any-thread]
    void SetType(Type type) noexcept { mType = type; }

    /// The number of channels of the layout.
    /// [any-thread]
    int GetChannelCount() const noexcept { return static_cast<int>(mLayout.size()); }

    /// [any-thread]
    friend bool operator==(AudioBusDescription const&, AudioBusDescription const&) = default;

private:
    vyncore::UString mName;
    AudioChannelLayout mLayout;
    Type mType = kTypeMain;
};

} // namespace vynmediatypes
