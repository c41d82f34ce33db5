#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace vynfixtures {

/// A test's hold on a fixture module: opens it (beside the host, which shares the loaded image), configures it and
/// reads what it has seen. The test owns it. It never runs the module's entry points.
///
/// While it lives the module stays loaded, so that what the host's unloading called can be read afterwards. A module
/// that the test alone has held forgets everything when this object goes.
/// [main-thread]
template <class Exports, class Configuration, class Call>
class HeldModule {
public:
    HeldModule(HeldModule const&) = delete;
    HeldModule& operator=(HeldModule const&) = delete;

    /// For what the module makes from now on. Clears the log.
    void Configure(Configuration const& configuration) {
        mExports->configure(&configuration);
        ClearCalls();
    }

    /// All calls since the log was cleared, in order.
    std::vector<Call> Calls() const {
        int count = 0;
        Call const* const calls = mExports->calls(&count);
        return {calls, calls + count};
    }

    void ClearCalls() { mExports->clearCalls(); }
    auto const& Snapshot() const { return *mExports->snapshot(); }

    /// The module's own functions.
    /// [any-thread]
    Exports const* operator->() const { return mExports; }

protected:
    /// Opens the module, whose export `entry` gives its functions, with an empty log; throws std::runtime_error when
    /// that fails.
    HeldModule(std::string const& path, char const* entry) : mHandle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        void* const found = mHandle != nullptr ? dlsym(mHandle, entry) : nullptr;
        if (found == nullptr)
            throw std::runtime_error(dlerror());
        mExports = reinterpret_cast<Exports const* (*)()>(found)();
        ClearCalls();
    }
    ~HeldModule() { dlclose(mHandle); }

private:
    void* mHandle = nullptr;
    Exports const* mExports = nullptr;
};

} // namespace vynfixtures
