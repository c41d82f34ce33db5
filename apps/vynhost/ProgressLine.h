#pragma once

#include <chrono>
#include <string>

namespace vynhost {

/// A line on standard error that tells how far the work is, and goes with the object. It is shown only to a person:
/// when standard error is no terminal nothing is printed.
class ProgressLine {
public:
    /// @param work  what is being done, such as "rendering"
    /// [main-thread]
    explicit ProgressLine(std::string work);
    ProgressLine(ProgressLine const&) = delete;
    ProgressLine& operator=(ProgressLine const&) = delete;
    /// [main-thread]
    ~ProgressLine();

    /// @param done    0..1; may be called as often as one likes
    /// @param detail  what the work is at; may be empty
    /// [main-thread]
    void Show(double done, std::string const& detail = {});

private:
    std::string mWork;
    bool mVisible;
    std::chrono::steady_clock::time_point mNext;
};

} // namespace vynhost
