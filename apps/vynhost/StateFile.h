#pragma once

#include "vyncore/strings/UString.h"

#include <string>
#include <utility>
#include <vector>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {
class AudioFilter;
class IPresetExchange;
} // namespace vynaudiofilterhost

namespace vynhost {

/// The state of a filter in a file: a property list with the filter's ID, its name and its preset, or, when the name
/// ends in the extension of the plug-in's own preset files, such a file. Both forms are read, whatever the name. All
/// failures are CommandErrors that name the file.
class StateFile {
public:
    /// Touches no file yet.
    /// [main-thread]
    explicit StateFile(std::string path) : mPath(std::move(path)) {}

    /// Gives the filter the state in the file. A file that is no state, is damaged, or holds a state of another plug-in
    /// is refused, and so is one that the plug-in doesn't take. What comes back are notes for the report.
    /// [main-thread]
    std::vector<std::string> Load(vynaudiofilterhost::AudioFilter& filter) const;

    /// Takes the filter's present state, in place of one taken before, and keeps it for Write.
    /// [main-thread]
    void Capture(vynaudiofilterhost::AudioFilter const& filter);

    /// Writes the state that was taken. The file appears whole, or stays as it was.
    /// [main-thread]
    void Write() const;

private:
    [[noreturn]] void Fail(std::string text) const;
    void LoadList(vynaudiofilterhost::AudioFilter& filter, std::string bytes,
                  vyncore::proplist::PropList& preset) const;
    bool IsForeign(vynaudiofilterhost::IPresetExchange const* exchange) const;

    std::string mPath;
    vyncore::UTF8String mContent;
};

} // namespace vynhost
