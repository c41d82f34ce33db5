#pragma once

#include <chrono>

namespace vynhost {

/// A line on standard error that tells how far the work is, and goes with the object. It is shown only to a person:
/// when standard error is no terminal nothing is printed.
class ProgressLine {
public:
    /// [main-thread]
    ProgressLine();
    ProgressLine(ProgressLine const&) = delete;
    ProgressLine& operator=(ProgressLine const&) = delete;
    /// [main-thread]
    ~ProgressLine();

    /// @param done  0..1; may be called as often as one likes
    /// [main-thread]
    void Show(double done);

private:
    bool mVisible;
    std::chrono::steady_clock::time_point mNext;
};

} // namespace vynhost
