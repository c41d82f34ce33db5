#pragma once

#include "vyncore/strings/UString.h"

#include <string>

namespace os {

/// The right to be the only process at work on something that a file stands for: held from the construction to the end
/// of the object, or of the process. The file stays, whoever holds the lock.
class FileLock {
public:
    /// Asks for the lock, without waiting; the file is made when it is missing.
    /// Throws std::runtime_error, with one line without the path, when there can't be such a file.
    /// [any-thread]
    explicit FileLock(vyncore::UString const& path);
    FileLock(FileLock const&) = delete;
    FileLock& operator=(FileLock const&) = delete;
    /// [any-thread]
    ~FileLock();

    /// [any-thread]
    bool IsHeld() const noexcept { return mHeld; }

    /// Of a lock that is not held: the number of the process that holds it, as far as it can be told, else 0.
    /// [any-thread]
    int GetHolder() const noexcept { return mHolder; }

private:
    void LeaveNumber() const;
    int ReadNumber() const;

    int mDescriptor = -1;
    bool mHeld = false;
    int mHolder = 0;
};

} // namespace os
