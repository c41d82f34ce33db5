#pragma once

#include "plugins/FixtureInterfaces.h"
#include "plugins/ModuleState.h"

#include <atomic>

namespace vynfixtures {

/// What the log calls an interface: its name, or its ID for the vendor's; null for those that it leaves out.
char const* InterfaceName(TUID const id);

/// The object that the host holds: FUnknown over one part (component or controller) or both in one.
/// Born with one reference; the last release destroys it.
template <class First, class... Others>
class FixtureInstance final : public First, public Others... {
public:
    FixtureInstance() {
        ++ModuleState::Get().liveObjects;
        Record(First::kObject, "created");
    }

    tresult PLUGIN_API queryInterface(TUID const id, void** object) override {
        void* found = First::Find(id);
        ((found = found != nullptr ? found : Others::Find(id)), ...);
        if (char const* const name = InterfaceName(id))
            Record(First::kObject, "queryInterface", {.argument = found != nullptr, .detail = name});
        *object = found;
        if (found == nullptr)
            return kNoInterface;
        addRef();
        return kResultOk;
    }

    uint32 PLUGIN_API addRef() override { return ++mReferences; }

    uint32 PLUGIN_API release() override {
        uint32 const left = --mReferences;
        if (left == 0)
            delete this;
        return left;
    }

private:
    ~FixtureInstance() {
        Record(First::kObject, "destroyed", {.argument = (First::GetOpenCount() + ... + Others::GetOpenCount())});
        --ModuleState::Get().liveObjects;
    }

    std::atomic<uint32> mReferences{1};
};

} // namespace vynfixtures
