#pragma once

#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace vyntest {

/// A pipe of a test's own, neither end of which ever blocks.
class Pipe {
public:
    /// Throws std::runtime_error when the system has none to give.
    Pipe() {
        if (pipe2(mEnds, O_CLOEXEC | O_NONBLOCK) != 0)
            throw std::runtime_error("no pipe");
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    ~Pipe() {
        CloseReader();
        CloseWriter();
    }

    int GetReader() const { return mEnds[0]; }

    /// Writes a byte; false when it doesn't fit.
    bool Write() const { return write(mEnds[1], "x", 1) == 1; }

    /// Reads a byte; false when there is none.
    bool Read() const {
        char byte;
        return read(mEnds[0], &byte, 1) == 1;
    }

    void CloseReader() { Close(mEnds[0]); }
    void CloseWriter() { Close(mEnds[1]); }

private:
    static void Close(int& end) {
        if (end >= 0)
            close(end);
        end = -1;
    }

    int mEnds[2];
};

} // namespace vyntest
