#pragma once

#include "plugins/FixtureExports.h"
#include "support/HeldModule.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace vynfixtures {

/// The path of a fixture module, such as FixturePath("configurable.vst3").
/// [any-thread]
std::string FixturePath(std::string_view name);

/// The same as the host takes its paths.
/// [any-thread]
std::u16string FixturePath16(std::string_view name);

/// Whether this process has the module at `path` loaded.
/// [any-thread]
bool IsModuleLoaded(std::string const& path);

/// The hold on a VST3 module.
/// [main-thread]
class FixtureModule : public HeldModule<FixtureExports, FixtureConfiguration, FixtureCall> {
public:
    /// Opens a module such as "configurable.vst3", as configured.
    explicit FixtureModule(std::string_view name, FixtureConfiguration const& configuration = {});

    /// The calls as texts, "Component.setActive(1)", "Controller.terminate()",
    /// "Component.queryInterface(IAudioProcessor)"; with `names` given, only calls of these names.
    std::vector<std::string> CallTexts(std::initializer_list<std::string_view> names = {}) const;

    /// The number of calls of this name.
    int CountCalls(std::string_view name) const;

    /// What the last process call brought.
    FixtureBlock const& LastBlock() const { return Snapshot().block; }

    /// The unique ID of the module's audio class `index`, such as "3:0a1b2c3d 5e6f 708090a0 b0c0d0e0".
    /// [any-thread]
    std::u16string UniqueID(int index = 0) const;

    /// [any-thread]
    std::string const& GetPath() const { return mPath; }

private:
    std::string mPath;
};

} // namespace vynfixtures
