#include "plugins/VSTFixtureState.h"

#include <algorithm>
#include <stdexcept>

namespace vynfixtures {
namespace {

VSTFixtureCall calls[kVSTFixtureLogCapacity];
std::atomic<int> nextCall{0};

} // namespace

VSTFixtureState& VSTFixtureState::Get() {
    static VSTFixtureState state;
    return state;
}

void RecordVSTCall(VSTFixtureCall const& call) {
    if (!VSTFixtureState::Get().configuration.logging)
        return;
    int const sequence = nextCall.fetch_add(1);
    if (sequence >= kVSTFixtureLogCapacity)
        return;
    calls[sequence] = call;
    calls[sequence].sequence = sequence;
    calls[sequence].thread = FixtureThread();
}

void ThrowInVSTCall(std::int32_t opcode) {
    VSTFixtureState& state = VSTFixtureState::Get();
    if (state.configuration.throwIn == opcode && state.throwingCalls.fetch_add(1) + 1 >= state.configuration.throwFrom)
        throw std::runtime_error("fixture");
}

VSTFixtureCall const* RecordedVSTCalls(int* count) {
    int const filed = nextCall.load();
    *count = std::min(filed, kVSTFixtureLogCapacity);
    VSTFixtureState::Get().snapshot.droppedCalls = filed - *count;
    return calls;
}

void ClearRecordedVSTCalls() {
    nextCall.store(0);
    VSTFixtureState::Get().snapshot.answerCount = 0;
}

} // namespace vynfixtures
