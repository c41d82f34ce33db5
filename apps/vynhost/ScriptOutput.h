#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vynhost {

/// What a script prints: on standard output at once, or kept for the document at the end.
class ScriptOutput {
public:
    /// Of kept lines, all together.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

    /// @param keeps  whether lines are kept instead of written
    explicit ScriptOutput(bool keeps) : mKeeps(keeps) {}

    /// Throws std::runtime_error when the text can't be written, or too much has been kept.
    /// [main-thread]
    void Print(std::string const& line);

    /// Whether anything that was to be printed is lost.
    /// [main-thread]
    bool HasFailed() const noexcept { return mFailed; }

    /// What was kept, a text for each call.
    /// [main-thread]
    std::vector<std::string> const& GetLines() const noexcept { return mLines; }

private:
    bool const mKeeps;
    bool mFailed = false;
    std::size_t mBytes = 0;
    std::vector<std::string> mLines;
};

} // namespace vynhost
