#pragma once

#include "vyncore/strings/UString.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {
class AudioFilter;
class IPresetExchange;
class PresetData;
} // namespace vynaudiofilterhost

namespace vynhost {

/// The state of a filter in a file: a property list with the filter's ID, its name and its preset, or, when the name
/// ends in an extension of the plug-in's own preset files, such a file. All forms are read, whatever the name. All
/// failures are CommandErrors that name the file.
class StateFile {
public:
    /// Touches no file yet.
    /// [main-thread]
    explicit StateFile(std::string path) : mPath(std::move(path)) {}

    /// Reads the state in the file, for Load. A file that is no state, is damaged or empty, or holds a state of another
    /// plug-in than the filter's is refused.
    /// [main-thread]
    void Read(vynaudiofilterhost::AudioFilter const& filter);

    /// Gives the filter, which may be another of the same plug-in, the state that was read. One that the plug-in
    /// doesn't take is refused.
    /// [main-thread]
    void Load(vynaudiofilterhost::AudioFilter& filter) const;

    /// Takes the filter's present state, in place of one taken before, and keeps it for Write. A plug-in that gives
    /// none that is whole, or one that the file's form can't hold, is a failure.
    /// [main-thread]
    void Capture(vynaudiofilterhost::AudioFilter const& filter);

    /// Writes the state that was taken. The file appears whole, or stays as it was.
    /// [main-thread]
    void Write() const;

private:
    [[noreturn]] void Fail(std::string text) const;
    void ReadList(vynaudiofilterhost::AudioFilter const& filter, std::string bytes);
    void ReadForeign(vynaudiofilterhost::IPresetExchange const& exchange, std::span<unsigned char const> bytes);
    void CaptureForeign(vynaudiofilterhost::IPresetExchange const& exchange,
                        vynaudiofilterhost::PresetData const& preset, vyncore::UString const& extension);

    /// The one that the file's name ends in, as the plug-in has it. The exchange may be null.
    /// [main-thread]
    std::optional<vyncore::UString> FindForeignExtension(vynaudiofilterhost::IPresetExchange const* exchange) const;

    std::string mPath;
    std::shared_ptr<vyncore::proplist::PropList> mPreset; ///< that was read; copies of the object share it
    vyncore::UTF8String mContent;
};

} // namespace vynhost
