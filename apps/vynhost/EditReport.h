#pragma once

#include "vynhost/EditorWindow.h"

#include <boost/signals2/connection.hpp>

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Tells on standard output what happens while a filter is edited, as it happens: in lines for a person, or in lines
/// that are a JSON document each. The filter belongs to the caller and must outlive it.
///
/// A person reads the value that a gesture ends with; a program gets both ends of a gesture and the values between. The
/// values of a parameter between two calls of Write are one, the last.
class EditReport {
public:
    /// Hears of the filter's edits from now on.
    /// [main-thread]
    EditReport(vynaudiofilterhost::AudioFilter& filter, bool json);
    EditReport(EditReport const&) = delete;
    EditReport& operator=(EditReport const&) = delete;

    /// Which plug-in is in the window, and its size.
    /// [main-thread]
    void TellOpened(WindowSize size);

    /// A line about anything else, not an edit.
    /// [main-thread]
    void TellNote(std::string const& text);

    /// A file has been written; `kind` is a word for what is in it.
    /// [main-thread]
    void TellFile(char const* kind, std::string const& path);

    /// Writes the edits that have come since. Throws what the plug-in throws.
    /// [main-thread]
    void WriteEdits();

    /// Whether something could not be written; nothing is tried again then.
    /// [main-thread]
    bool HasFailed() const noexcept { return mFailed; }

private:
    struct Edit {
        int index = 0;
        std::optional<float> value = {}; ///< normalized; a gesture has none
        std::optional<bool> begins = {}; ///< of a gesture
    };

    void HearValue(int index, float value);
    void HearGesture(int index, bool begins);
    void WriteEdit(Edit const& edit);
    bool IsForPerson(Edit const& edit);
    void Write(std::string const& text);

    vynaudiofilterhost::AudioFilter& mFilter;
    bool const mJSON;
    bool mFailed = false;
    std::set<int> mOpenGestures;
    std::set<int> mMoved; ///< of those, the ones with a value since
    std::mutex mMutex;    ///< plug-ins report edits on any thread
    std::vector<Edit> mEdits;
    boost::signals2::scoped_connection mValueConnection; ///< go first
    boost::signals2::scoped_connection mGestureConnection;
};

} // namespace vynhost
