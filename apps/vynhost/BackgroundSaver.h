#pragma once

#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace vynhost {

/// Saves one file again and again, each time whole or not at all, on a thread of its own: bringing it to the disk takes
/// longer than most of what happens meanwhile. The file's content is handed over as a text and is nobody else's then.
///
/// What changes often is noted by NoteChange and handed over by SaveWhenDue: making and saving the text takes a tenth
/// of the time, unless a change would wait for more than a second, and for the saving that is under way.
class BackgroundSaver {
public:
    /// [main-thread]
    explicit BackgroundSaver(vyncore::filesupport::File file);
    BackgroundSaver(BackgroundSaver const&) = delete;
    BackgroundSaver& operator=(BackgroundSaver const&) = delete;
    /// Waits for what has been handed over. A failure is not told; Finish before.
    /// [main-thread]
    ~BackgroundSaver();

    /// Whether everything that was handed over is on the disk. Throws CommandError when something could not be saved,
    /// as do all operations from then on.
    /// [main-thread]
    bool IsIdle();

    /// Hands a content over. One that was handed over before and isn't being saved yet is dropped.
    /// [main-thread]
    void Save(vyncore::UTF8String text);

    /// The content is another one.
    /// [main-thread]
    void NoteChange() noexcept { mIsOutdated = true; }

    /// Makes the text and hands it over when the content has changed and it is time to. The time of
    /// os::GetMonotonicNanos at which to be called again; empty when there is no need.
    /// [main-thread]
    std::optional<std::uint64_t> SaveWhenDue(std::function<vyncore::UTF8String()> const& makeText);

    /// Hands over what is outdated, and waits until everything is on the disk.
    /// [main-thread]
    void Finish(std::function<vyncore::UTF8String()> const& makeText);

    /// Waits until everything that was handed over is on the disk.
    /// [main-thread]
    void Finish();

private:
    void Work();
    std::uint64_t GetDueTime();
    bool IsAtRest() const noexcept { return !mNext && !mSaving; }
    void ThrowFailure() const;

    vyncore::filesupport::File const mFile;
    bool mIsOutdated = false;
    std::uint64_t mMakingTime = 0; ///< of the last text, in nanoseconds

    std::mutex mMutex; ///< for what follows
    std::condition_variable mChanged;
    std::optional<vyncore::UTF8String> mNext;
    bool mSaving = false;
    bool mEnding = false;
    std::uint64_t mSavingTime = 0; ///< of the last text, in nanoseconds
    std::uint64_t mSavedAt = 0;    ///< of os::GetMonotonicNanos
    std::exception_ptr mFailure;
    std::thread mThread; ///< last, so that all it uses is there
};

} // namespace vynhost
