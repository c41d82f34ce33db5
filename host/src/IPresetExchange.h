#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <span>
#include <vector>

namespace vynaudiofilterhost {

class PresetData;

/// What the filter of a plug-in offers beyond AudioFilter: the files in which presets of the plug-in's format travel
/// between hosts, and an account of what becomes of a state, be it a chunk of the plug-in's own or its parameters. A
/// filter that has it derives from it beside AudioFilter; ask with dynamic_cast. It opens no file.
class VYN_API IPresetExchange {
public:
    using Bytes = std::vector<unsigned char, vyncore::allocator::STLAllocator<unsigned char>>;

    /// The extensions of such files, without a dot, such as "vstpreset"; at least one. A format may have several kinds
    /// of file, told apart on writing by their extensions alone.
    /// [any-thread]
    virtual std::vector<vyncore::UString> GetPresetFileExtensions() const = 0;

    /// Whether the bytes begin as such a file does, of whichever kind.
    /// [any-thread]
    virtual bool IsPresetFile(std::span<unsigned char const> bytes) const = 0;

    /// Makes `preset` what a file holds, for LoadSettings. False, with the reason for a person and `preset` as it was,
    /// when the bytes are no such file, or cut short, or a preset of another plug-in.
    /// [main-thread]
    virtual bool ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset,
                                vyncore::UString& reason) const = 0;

    /// The content of a file that holds a preset of SaveSettings; `extension`, one of GetPresetFileExtensions, says of
    /// which kind. False, with the reason for a person and `bytes` as they were, when the preset's state is not whole
    /// or files of that kind can't hold it.
    /// [main-thread]
    virtual bool WritePresetFile(PresetData const& preset, vyncore::UString const& extension, Bytes& bytes,
                                 vyncore::UString& reason) const = 0;

    /// Whether the preset has a state of the filter's version, in the form that the filter takes, that LoadSettings can
    /// hand to the plug-in whole: a chunk with something in it, or a finite value for each parameter. Of a chunk that
    /// was cut short LoadSettings hands over what is there, and says nothing.
    /// [main-thread]
    virtual bool IsStateWhole(PresetData const& preset) const = 0;

    /// Whether the plug-in, as far as it said, took all that the last LoadSettings handed to it. Some say no and take
    /// it all the same; in a format in which plug-ins have no say it is always true.
    /// [main-thread]
    virtual bool WasStateTaken() const = 0;

    /// Whether SetFactoryPreset reaches the plug-in. Some name presets that no host can select.
    /// [main-thread]
    virtual bool CanSelectFactoryPreset(int index) const = 0;

protected:
    ~IPresetExchange() = default;
};

} // namespace vynaudiofilterhost
