#include "plugins/ModuleState.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace vynfixtures {
namespace {

FixtureCall calls[kFixtureLogCapacity];
std::atomic<int> nextCall{0};
std::atomic<void (*)(FixtureCall const*)> callSink{nullptr};

void ThrowIfTold(FixtureObject object, std::string_view name) {
    static constexpr std::string_view objects[] = {"Module.", "Factory.", "Component.", "Controller.", "View."};
    FixtureConfiguration const& configuration = ModuleState::Get().configuration;
    std::string_view const told = configuration.throwIn;
    std::string_view const prefix = objects[static_cast<int>(object)];
    if (!told.starts_with(prefix) || told.substr(prefix.size()) != name)
        return;
    if (ModuleState::Get().throwingCalls.fetch_add(1) + 1 >= configuration.throwFrom)
        throw std::runtime_error("fixture");
}

} // namespace

ModuleState& ModuleState::Get() {
    static ModuleState state;
    return state;
}

void Record(FixtureObject object, char const* name, CallFacts const& facts) {
    if (!ModuleState::Get().configuration.logging)
        return;
    FixtureCall spare;
    int const sequence = nextCall.fetch_add(1);
    FixtureCall& call = sequence < kFixtureLogCapacity ? calls[sequence] : spare;
    call.object = object;
    call.sequence = sequence;
    SetFixtureText<char>(call.name, name);
    SetFixtureText<char>(call.detail, facts.detail);
    call.hasArgument = facts.argument.has_value();
    call.argument = facts.argument.value_or(0);
    std::copy_n(facts.extra, 2, call.extra);
    call.value = facts.value;
    call.thread = FixtureThread();
    if (auto const sink = callSink.load())
        sink(&call);
    ThrowIfTold(object, name);
}

FixtureCall const* RecordedCalls(int* count) {
    int const filed = nextCall.load();
    *count = std::min(filed, kFixtureLogCapacity);
    ModuleState::Get().snapshot.droppedCalls = filed - *count;
    return calls;
}

void ClearRecordedCalls() {
    nextCall.store(0);
}

void SetRecordSink(void (*sink)(FixtureCall const*)) {
    callSink.store(sink);
}

} // namespace vynfixtures
