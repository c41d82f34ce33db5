#pragma once

#include <string>

namespace os {

/// Sees to it that a file doesn't outlive a process that a signal ends, a crash included: by a full stack too, if that
/// of the thread that made the object. It puts signal handlers in for as long as it lives, so it belongs to a program
/// and never to a library. What is ignored when it is made stays ignored, and the children of the process leave the
/// file alone. At most one object at a time.
class FileRemovalOnSignals {
public:
    /// @param path  in the system's own encoding; the file need not be there yet, or any more.
    /// Throws std::runtime_error when the path is too long to name a file.
    /// [main-thread]
    explicit FileRemovalOnSignals(std::string const& path);
    FileRemovalOnSignals(FileRemovalOnSignals const&) = delete;
    FileRemovalOnSignals& operator=(FileRemovalOnSignals const&) = delete;
    /// Puts the former handlers back, where nobody has put in others since; the file stays.
    /// [main-thread]
    ~FileRemovalOnSignals();

    /// Removes the file of the object that lives now, for whoever ends the process at once; nothing without one.
    /// [any-thread]
    static void RemoveNow() noexcept;
};

} // namespace os
