#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vyntest {

/// Sets an environment variable for one test (null takes it away) and puts the old value back. Owned by the test.
/// [main-thread]
class ScopedVariable {
public:
    ScopedVariable(char const* name, char const* value) : mName(name) {
        if (char const* const before = std::getenv(name))
            mBefore = before;
        Set(value);
    }
    ~ScopedVariable() { Set(mBefore ? mBefore->c_str() : nullptr); }

    ScopedVariable(ScopedVariable const&) = delete;
    ScopedVariable& operator=(ScopedVariable const&) = delete;

private:
    void Set(char const* value) const { value ? setenv(mName, value, 1) : unsetenv(mName); }

    char const* mName;
    std::optional<std::string> mBefore;
};

} // namespace vyntest
