#pragma once

#include "plugins/FixtureExports.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

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

/// A call as text, "Component.setActive(1)", "Controller.terminate()", "Component.queryInterface(IAudioProcessor)".
/// [any-thread]
std::string CallText(FixtureCall const& call);

/// A test's hold on a fixture module: opens it (beside the host, which shares the loaded image), configures it and
/// reads what it has seen. The test owns it. It never runs the module's entry points.
///
/// While it lives the module stays loaded, so that what the host's unloading called can be read afterwards. A module
/// that the test alone has held forgets everything when this object goes.
class FixtureModule {
public:
    /// Opens the module with the default configuration and an empty log; throws std::runtime_error when that fails.
    /// [main-thread]
    explicit FixtureModule(std::string_view name);
    FixtureModule(std::string_view name, FixtureConfiguration const& configuration);
    FixtureModule(FixtureModule const&) = delete;
    FixtureModule& operator=(FixtureModule const&) = delete;
    ~FixtureModule();

    /// For objects made from now on. Clears the log.
    /// [main-thread]
    void Configure(FixtureConfiguration const& configuration);

    /// All calls since the log was cleared, in order.
    /// [main-thread]
    std::vector<FixtureCall> Calls() const;

    /// The calls as CallText; with `names` given, only calls of these names.
    /// [main-thread]
    std::vector<std::string> CallTexts(std::initializer_list<std::string_view> names = {}) const;

    /// The number of calls of this name.
    /// [main-thread]
    int CountCalls(std::string_view name) const;

    /// [main-thread]
    void ClearCalls();

    /// What the last process call brought.
    /// [main-thread]
    FixtureBlock const& LastBlock() const { return Snapshot().block; }

    /// [main-thread]
    FixtureSnapshot const& Snapshot() const { return *mExports->snapshot(); }

    /// The unique ID of the module's audio class `index`, such as "3:0a1b2c3d 5e6f 708090a0 b0c0d0e0".
    /// [any-thread]
    std::u16string UniqueID(int index = 0) const;

    /// The module's own functions: setLatency, setSink, liveObjects, factoryReferences, callHost.
    /// [any-thread]
    FixtureExports const* operator->() const { return mExports; }

    /// [any-thread]
    std::string const& GetPath() const { return mPath; }

private:
    std::string mPath;
    void* mHandle = nullptr;
    FixtureExports const* mExports = nullptr;
};

} // namespace vynfixtures
