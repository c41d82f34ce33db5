#pragma once

#include "vyncore/Export.h"

#include <cstdint>

namespace vynaudiofilterhost::vst3 {

/// What an application asks of a filter that works on stretches of its material and not only on the block at hand,
/// such as one that must see what comes later. A VST3 filter carries it as a base, which the application reaches by a
/// dynamic cast, and passes the questions on to its plug-in's processor. No code of the library asks them.
///
/// Positions and lengths are samples of the material. A filter whose plug-in lacks the extension answers false to
/// everything but the latency. Nobody owns anything through this interface.
class VYN_API IVirtualAudioFilterSupport {
public:
    /// True when there is a processor behind the other questions.
    /// [main-thread]
    virtual bool IsVirtualAudioFilterSupported() const = 0;

    /// Announces that the stretch is about to be rendered; false when the plug-in can't.
    /// [main-thread & suspended]
    virtual bool BeginVirtualPass(std::int64_t firstSample, std::int64_t sampleCount) = 0;

    /// Ends the pass that began last; false when there was none.
    /// [main-thread & suspended]
    virtual bool EndVirtualPass() = 0;

    /// Which stretch of the input the given stretch of the output is made from. False, with nothing written, when the
    /// plug-in has no answer: then it is the same stretch.
    /// [main-thread]
    virtual bool GetInputRange(std::int64_t firstOutput, std::int64_t outputCount, std::int64_t& firstInput,
                               std::int64_t& inputCount) const = 0;

    /// Tells that the material of the stretch has changed; false when what was computed before still holds.
    /// [main-thread]
    virtual bool InvalidateInputRange(std::int64_t firstSample, std::int64_t sampleCount) = 0;

    /// The latency in samples. The filter answers this one itself.
    /// [main-thread]
    virtual int GetVirtualLatency() const = 0;

    /// True when the stretch of the output is ready, so that rendering it won't wait for the plug-in.
    /// [main-thread]
    virtual bool IsOutputRangeReady(std::int64_t firstSample, std::int64_t sampleCount) const = 0;

protected:
    IVirtualAudioFilterSupport() = default;
    IVirtualAudioFilterSupport(IVirtualAudioFilterSupport const&) = default;
    IVirtualAudioFilterSupport& operator=(IVirtualAudioFilterSupport const&) = default;
    ~IVirtualAudioFilterSupport() = default;
};

} // namespace vynaudiofilterhost::vst3
