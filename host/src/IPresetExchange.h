#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <span>
#include <vector>

namespace vynaudiofilterhost {

class PresetData;

/// What a filter whose presets are chunks of a plug-in's own offers beyond AudioFilter: the file in which presets of
/// the plug-in's format travel between hosts, and an account of what became of a chunk. A filter that has it derives
/// from it beside AudioFilter; ask with dynamic_cast. It opens no file.
class VYN_API IPresetExchange {
public:
    using Bytes = std::vector<unsigned char, vyncore::allocator::STLAllocator<unsigned char>>;

    /// The extension of such files, without a dot, such as "vstpreset".
    /// [any-thread]
    virtual vyncore::UString GetPresetFileExtension() const = 0;

    /// Whether the bytes begin as such a file does.
    /// [any-thread]
    virtual bool IsPresetFile(std::span<unsigned char const> bytes) const = 0;

    /// Makes `preset` what a file holds, for LoadSettings. False, with the reason for a person and `preset` as it was,
    /// when the bytes are no such file, or cut short, or a preset of another plug-in.
    /// [main-thread]
    virtual bool ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset,
                                vyncore::UString& reason) const = 0;

    /// The content of a file that holds a preset of SaveSettings. False, with `bytes` as they were, when the preset has
    /// no chunk that is whole.
    /// [main-thread]
    virtual bool WritePresetFile(PresetData const& preset, Bytes& bytes) const = 0;

    /// Whether the preset has a chunk of the filter's version that LoadSettings can hand to the plug-in, something and
    /// whole. Of one that was cut short it hands over what is there, and says nothing.
    /// [main-thread]
    virtual bool IsChunkWhole(PresetData const& preset) const = 0;

    /// Whether the plug-in said of everything that the last LoadSettings handed to it that it took it. Some say no and
    /// take it all the same.
    /// [main-thread]
    virtual bool WasChunkTaken() const = 0;

    /// Whether SetFactoryPreset reaches the plug-in. Some name presets that no host can select.
    /// [main-thread]
    virtual bool CanSelectFactoryPreset(int index) const = 0;

protected:
    ~IPresetExchange() = default;
};

} // namespace vynaudiofilterhost
