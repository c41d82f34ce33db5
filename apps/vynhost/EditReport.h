#pragma once

#include "vynhost/EditorWindow.h"

#include <boost/signals2/connection.hpp>

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Tells on standard output what happens while a filter is edited, as it happens: in lines for a person, or in lines
/// that are a JSON document each. The filter belongs to the caller and must outlive it.
///
/// A person reads the value that a gesture ends with; a program gets both ends of a gesture and the values between.
/// What happens to a parameter until it is its turn to be written is one thing: the last value, and of the gestures the
/// first beginning and the last end. So what waits doesn't grow with what a plug-in does.
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

    /// Writes edits that have come since, for as long as is fair to the rest of the main thread's work; the others are
    /// next. Throws what the plug-in throws.
    /// [main-thread]
    void WriteEdits();

    /// Writes all that have come until it is called. Throws what the plug-in throws.
    /// [main-thread]
    void WriteAllEdits();

    /// Whether something could not be written; nothing is tried again then.
    /// [main-thread]
    bool HasFailed() const noexcept { return mFailed; }

private:
    /// What has happened to a parameter, in the order of the fields.
    struct Edit {
        int index = 0;
        bool begins = false;
        std::optional<float> value = {}; ///< normalized
        bool ends = false;
    };
    enum class Kind { kBegin, kValue, kEnd };

    void HearValue(int index, float value);
    void HearGesture(int index, bool begins);
    Edit* FindOrAdd(int index);
    std::optional<Edit> TakeEdit();
    void WriteEdits(std::uint64_t deadlineNanos);
    void WriteEdit(Edit const& edit);
    void WritePart(int index, Kind kind, std::optional<float> told);
    bool IsForPerson(int index, Kind kind);
    void Write(std::string const& text);

    vynaudiofilterhost::AudioFilter& mFilter;
    bool const mJSON;
    bool mFailed = false;
    std::set<int> mOpenGestures;
    std::set<int> mMoved; ///< of those, the ones with a value since
    std::mutex mMutex;    ///< plug-ins report edits on any thread
    std::deque<Edit> mEdits;
    std::unordered_map<int, std::uint64_t> mPlaces;      ///< of parameters in mEdits, counted from the first ever
    std::uint64_t mTaken = 0;                            ///< from mEdits so far
    boost::signals2::scoped_connection mValueConnection; ///< go first
    boost::signals2::scoped_connection mGestureConnection;
};

} // namespace vynhost
