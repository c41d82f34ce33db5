#pragma once

#include "plugins/VSTFixtureExports.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vynfixtures {

/// A test's hold on a VST 2.x fixture module: opens it (beside the host, which shares the loaded image), configures it
/// and reads what it has seen. The test owns it. It never runs the module's entry function.
///
/// While it lives the module stays loaded. A module that the test alone has held forgets everything when this object
/// goes.
class VSTFixtureModule {
public:
    /// Opens a module such as "shell.so", which behaves by its own habit or as configured, with an empty log; throws
    /// std::runtime_error when that fails.
    /// [main-thread]
    explicit VSTFixtureModule(std::string_view name);
    VSTFixtureModule(std::string_view name, VSTFixtureConfiguration const& configuration);
    VSTFixtureModule(VSTFixtureModule const&) = delete;
    VSTFixtureModule& operator=(VSTFixtureModule const&) = delete;
    ~VSTFixtureModule();

    /// The path of a fixture module, such as Path("shell.so"), and the same as the host takes it.
    /// [any-thread]
    static std::string Path(std::string_view name);
    static std::u16string Path16(std::string_view name);

    /// For effects made from now on. Clears the log.
    /// [main-thread]
    void Configure(VSTFixtureConfiguration const& configuration);

    /// All calls since the log was cleared, in order.
    /// [main-thread]
    std::vector<VSTFixtureCall> Calls() const;

    /// The calls as VSTOpcodeName has them; with `opcodes` given, only those.
    /// [main-thread]
    std::vector<std::string> Names(std::initializer_list<std::int32_t> opcodes = {}) const;

    /// The names of the calls since the last time; clears the log.
    /// [main-thread]
    std::vector<std::string> TakeNames();

    /// The calls as VSTCallText; with `opcodes` given, only those.
    /// [main-thread]
    std::vector<std::string> Texts(std::initializer_list<std::int32_t> opcodes = {}) const;

    /// The texts of the calls that the host had no business to make, or made with wrong arguments.
    /// [main-thread]
    std::vector<std::string> IllFormedCalls() const;

    /// The number of calls of this opcode.
    /// [main-thread]
    int CountCalls(std::int32_t opcode) const;

    /// [main-thread]
    void ClearCalls();

    /// [main-thread]
    VSTFixtureSnapshot const& Snapshot() const { return *mExports->snapshot(); }

    /// The host's answers to calls of `opcode` that the module was configured to make, in order.
    /// [main-thread]
    std::vector<std::int64_t> Answers(std::int32_t opcode) const;

    /// Calls the host on behalf of the effect made last, on the calling thread, and gives its answer.
    /// [any-thread]
    std::intptr_t CallHost(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                           float opt = 0.0f) const;

    /// The effect made last, null when it is closed.
    /// [any-thread]
    vynaudiofilterhost::vst::AEffect* Effect() const { return mExports->effect(); }

    /// Closes the effect made last, which a host that doesn't take it for one leaves alone.
    /// [main-thread]
    void CloseEffect() const;

    /// The module's own functions.
    /// [any-thread]
    VSTFixtureExports const* operator->() const { return mExports; }

private:
    void* mHandle = nullptr;
    VSTFixtureExports const* mExports = nullptr;
};

} // namespace vynfixtures
