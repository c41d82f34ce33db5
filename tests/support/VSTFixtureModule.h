#pragma once

#include "plugins/VSTFixtureExports.h"
#include "support/HeldModule.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vynfixtures {

/// The hold on a VST 2.x module.
/// [main-thread]
class VSTFixtureModule : public HeldModule<VSTFixtureExports, VSTFixtureConfiguration, VSTFixtureCall> {
public:
    /// Opens a module such as "shell.so", which behaves by its own habit or as configured.
    explicit VSTFixtureModule(std::string_view name);
    VSTFixtureModule(std::string_view name, VSTFixtureConfiguration const& configuration);

    /// The path of a fixture module, such as Path("shell.so"), and the same as the host takes it.
    /// [any-thread]
    static std::string Path(std::string_view name);
    static std::u16string Path16(std::string_view name);

    /// The calls as VSTOpcodeName has them; with `opcodes` given, only those.
    std::vector<std::string> Names(std::initializer_list<std::int32_t> opcodes = {}) const;

    /// The names of the calls since the last time; clears the log.
    std::vector<std::string> TakeNames();

    /// The calls as VSTCallText; with `opcodes` given, only those.
    std::vector<std::string> Texts(std::initializer_list<std::int32_t> opcodes = {}) const;

    /// The texts of the calls that the host had no business to make, or made with wrong arguments.
    std::vector<std::string> IllFormedCalls() const;

    /// The number of calls of this opcode.
    int CountCalls(std::int32_t opcode) const;

    /// The host's answers to calls of `opcode` that the module was configured to make, in order.
    std::vector<std::int64_t> Answers(std::int32_t opcode) const;

    /// Calls the host on behalf of the effect made last, on the calling thread, and gives its answer.
    /// [any-thread]
    std::intptr_t CallHost(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                           float opt = 0.0f) const;

    /// The effect made last, null when it is closed.
    /// [any-thread]
    vynaudiofilterhost::vst::AEffect* Effect() const { return (*this)->effect(); }

    /// Closes the effect made last, which a host that doesn't take it for one leaves alone.
    void CloseEffect() const;
};

} // namespace vynfixtures
