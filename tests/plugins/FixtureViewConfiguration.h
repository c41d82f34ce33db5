#pragma once

#include <cstdint>

namespace vynfixtures {

/// A rectangle as views state it. It may be empty, or any nonsense.
struct FixtureRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend bool operator==(FixtureRect const&, FixtureRect const&) = default;
};

/// How the view of a fixture's controller behaves.
struct FixtureViewConfiguration {
    bool present = false; ///< false: createView gives null
    FixtureRect size = {0, 0, 400, 300};
    bool sizeFails = false; ///< getSize, which leaves the rectangle alone
    bool attachedFails = false;

    FixtureRect resizeInAttached = {}; ///< what attached asks the frame for; all 0: nothing
    FixtureRect resizeInOnSize = {};   ///< what onSize asks for in its turn; all 0: nothing
    int resizesInOnSize = 1;           ///< how often it does so; -1: every time

    /// While it is attached the view has a timer of a millisecond and a pipe with a byte in it registered with the run
    /// loop of its frame. Their handlers are the module's own, and outlive the view.
    bool usesRunLoop = false;
    bool readsPipe = true;       ///< the pipe's handler takes the byte out
    bool leavesHandlers = false; ///< removed unregisters nothing
};

} // namespace vynfixtures
