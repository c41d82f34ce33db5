#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vynhost {

/// What a scanning child tells its parent, one thing at a time. In their order: kReady once; then for each module
/// kBegun, kProgress any number of times, kRefused or kFiled with one kFilter for each of its filters and perhaps a
/// kNote, and once the module is unloaded kUnfit or nothing, and kDone.
enum class ScanFrameKind : std::uint8_t {
    kReady = 1, ///< the child waits for its first module
    kBegun,     ///< from here on the module's own code may run
    kProgress,  ///< text to show behind the module, such as " (3/5)"
    kRefused,   ///< why there is nothing to file
    kFiled,     ///< the module and its filters, for PluginModuleInfoManager::AddConfiguration
    kFilter,    ///< unique ID
    kNote,      ///< something that a user should know of the module
    kUnfit,     ///< something of the module is left after it was unloaded; the child takes no other
    kDone,
};

struct ScanFrame {
    ScanFrameKind kind;
    std::string text;
};

/// The bytes of a frame: the length of its text in four bytes, the lowest first, a byte for the kind, the text.
/// [any-thread]
std::string EncodeScanFrame(ScanFrameKind kind, std::string_view text);

/// Takes frames out of a stream of bytes, however it is cut up. What comes in may be anything.
class ScanFrameReader {
public:
    /// The longest text of a frame. Longer than any stored inventory may be.
    static constexpr std::size_t kMostText = std::size_t{80} << 20;

    /// [any-thread]
    void Append(std::string_view bytes);

    /// The next frame, if all of it has come.
    /// [any-thread]
    std::optional<ScanFrame> Next();

    /// Whether something came that is no frame; nothing more comes out then.
    /// [any-thread]
    bool IsBroken() const noexcept { return mBroken; }

private:
    std::string mBytes;
    std::size_t mTaken = 0;
    bool mBroken = false;
};

} // namespace vynhost
