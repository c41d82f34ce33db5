#pragma once

#include "guard/FloatingPointMode.h"

#include "vynaudiofilterhost/ChannelRouter.h"

#include <atomic>
#include <cstdint>
#include <utility>

namespace vynguard {

using vynaudiofilterhost::ChannelFlags;

/// Stands between a plug-in and the ears and speakers behind it. For an application to put around each block that it
/// renders; one guard for each filter, or for a whole chain of them:
///
///     guard.Run(out, channels, samples, silent, [&] { filter.ProcessWithMapping(in, out, samples, {}, silent); });
///
/// - A block with a sample that is NaN, infinite or beyond kLoudest is silenced as a whole, in all its channels. They
///   come out of the same calculation: what spoils one has reached the others or will, and is mixed with them further
///   on; a single channel that drops out would only throw the sound to one side.
/// - Denormals are taken and given as 0 meanwhile, so that decaying sound costs no more than any other.
/// - The thread's floating-point mode is afterwards what it was before. When a plug-in leaves another one behind than
///   it was given, that is counted. Setting what is set already, as many do with denormals, is no change.
///
/// It doesn't bring back a plug-in that gives nothing else any more: only the plug-in's own reset does.
class OutputGuard {
public:
    static constexpr float kLoudest = 1000.0f; ///< +60 dB over full scale

    struct Report {
        std::int64_t silenced = 0;     ///< blocks
        std::int64_t modeRestored = 0; ///< Scopes behind which the mode had to be restored
    };

    /// The floating-point mode for plug-ins, until its end on the same thread. It counts for the guard, which must
    /// outlive it.
    class Scope {
    public:
        /// [process-thread]
        explicit Scope(OutputGuard& guard) noexcept;
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;
        /// [process-thread]
        ~Scope();

    private:
        OutputGuard& mGuard;
        FloatingPointMode const mBefore;
        FloatingPointMode const mGiven;
    };

    /// Renders a block in a Scope, and then does as Check does. When `process` throws, the block is silent, too, but
    /// not counted, and the exception goes on.
    /// @param process  fills out[channel][sample] and `silent`
    /// [process-thread]
    template <class Process>
    void Run(float* const* out, int channels, int samples, ChannelFlags& silent, Process&& process) {
        try {
            Scope const scope(*this);
            std::forward<Process>(process)();
        } catch (...) {
            Silence(out, channels, samples, silent);
            throw;
        }
        Check(out, channels, samples, silent);
    }

    /// Silences the block, and counts it, when it must not be heard: all samples become 0 and all channels are flagged.
    /// Channels that are flagged already aren't read: theirs is no sound, whatever their samples are.
    /// @param out     out[channel][sample]
    /// @param silent  a flag for each channel
    /// [process-thread]
    void Check(float* const* out, int channels, int samples, ChannelFlags& silent) noexcept;

    /// The counts since the guard was made.
    /// [any-thread]
    Report GetReport() const noexcept;

private:
    static void Silence(float* const* out, int channels, int samples, ChannelFlags& silent) noexcept;

    // Written by the process thread alone.
    std::atomic<std::int64_t> mSilenced = 0;
    std::atomic<std::int64_t> mModeRestored = 0;
};

} // namespace vynguard
