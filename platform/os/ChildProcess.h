#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace os {

/// How a process came to its end.
struct ProcessEnd {
    enum class Kind { kExited, kKilled };

    Kind kind = Kind::kExited;
    int number = 0; ///< the exit status, or the number of the signal

    /// [any-thread]
    bool IsClean() const noexcept { return kind == Kind::kExited && number == 0; }

    /// In words that go on after "it ": "exited with status 3", "crashed: Segmentation fault (SIGSEGV)".
    /// [any-thread]
    std::string Describe() const;
};

/// A process that this one has started and owns, along with everything that it starts in turn. It shares nothing with
/// this one but its three standard streams, which are pipes, and it doesn't outlive this one, however that ends.
///
/// Life: made, which starts it; Send, Read, until TakeEnd tells how it ended. The end of the object ends the process.
/// 1. Nothing here waits, but for the process to be gone when it has been killed.
/// 2. What it has started itself may hold its pipes open for ever: only the end descriptor tells that it has ended.
/// 3. The descriptors are for os::WaitForDescriptors; -1 stands for one that there is no more.
class ChildProcess {
public:
    enum class Stream { kOutput, kErrors };

    /// @param program    path of a program, such as GetOwnProgram()
    /// @param arguments  without the program's name
    /// Throws std::runtime_error when the system has no process or no pipe to give. A program that can't be run is a
    /// process that exits with status 127 and says why on its standard error.
    /// The process ends with the thread that makes it.
    /// [main-thread]
    ChildProcess(std::string const& program, std::vector<std::string> const& arguments);
    ChildProcess(ChildProcess const&) = delete;
    ChildProcess& operator=(ChildProcess const&) = delete;
    /// [main-thread]
    ~ChildProcess();

    /// Puts the text into the process's standard input: all of it or nothing. False when it doesn't fit in now, or when
    /// nobody reads there any more.
    /// [main-thread]
    bool Send(std::string_view text);

    /// The process finds the end of its standard input.
    /// [main-thread]
    void CloseInput();

    /// Appends what the process has written and has not been read yet, at most so many bytes. False at the stream's
    /// end.
    /// [main-thread]
    bool Read(Stream stream, std::string& text, std::size_t most);

    /// Readable when there is something to Read.
    /// [main-thread]
    std::intptr_t GetDescriptor(Stream stream) const noexcept { return mStreams[static_cast<std::size_t>(stream)]; }

    /// Readable from the end of the process on.
    /// [main-thread]
    std::intptr_t GetEndDescriptor() const noexcept { return mEndDescriptor; }

    /// How the process ended; empty while it runs. What it has written may still be read. What it had started is ended.
    /// [main-thread]
    std::optional<ProcessEnd> TakeEnd();

    /// Ends the process and all that it has started, whatever they are doing, and waits until it is gone.
    /// [main-thread]
    void Kill();

private:
    void Collect(bool wait);

    int mProcess = -1;
    int mInput = -1;
    std::array<int, 2> mStreams{-1, -1};
    int mEndDescriptor = -1;
    std::optional<ProcessEnd> mEnd;
};

/// The path of the program that this process runs, for ChildProcess. It holds as long as the process does, whatever
/// becomes of the program's file.
/// [any-thread]
std::string GetOwnProgram();

/// The system's number of this process. After a fork another one in each of the two.
/// [any-thread]
int GetProcessNumber() noexcept;

/// The number of threads of this process; 0 when the system doesn't tell.
/// [any-thread]
int CountThreads() noexcept;

/// The number of descriptors that this process has open; 0 when the system doesn't tell, as when no other can be
/// opened.
/// [any-thread]
int CountDescriptors() noexcept;

/// How many descriptors this process may have open at a time.
/// [any-thread]
int GetMostDescriptors() noexcept;

/// Whether this process has started one that it hasn't waited for, ended or not.
/// [any-thread]
bool HasChildren() noexcept;

} // namespace os
