#pragma once

#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

namespace vynhost {

/// Saves one file again and again, each time whole or not at all, on a thread of its own: bringing it to the disk takes
/// longer than most of what happens meanwhile. The file's content is handed over as a text and is nobody else's then.
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

    /// Waits until everything is on the disk.
    /// [main-thread]
    void Finish();

private:
    void Work();
    bool IsAtRest() const noexcept { return !mNext && !mSaving; }
    void ThrowFailure() const;

    vyncore::filesupport::File const mFile;
    std::mutex mMutex; ///< for what follows
    std::condition_variable mChanged;
    std::optional<vyncore::UTF8String> mNext;
    bool mSaving = false;
    bool mEnding = false;
    std::exception_ptr mFailure;
    std::thread mThread; ///< last, so that all it uses is there
};

} // namespace vynhost
