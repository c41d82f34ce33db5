#pragma once

#include "plugins/FixtureInterfaces.h"
#include "plugins/ModuleState.h"

#include "pluginterfaces/base/ipluginbase.h"

#include <utility>

namespace vynfixtures {

/// The class factory of a fixture module. One static object, which its references only count.
/// The list begins with an audio class, goes on with the classes of other categories (the controller first) and ends
/// with the rest of the audio classes.
class FixtureFactory final : public IPluginFactory3 {
public:
    static FixtureFactory& Get();

    int GetReferences() const { return mReferences; }

    tresult PLUGIN_API queryInterface(TUID const id, void** object) override;
    uint32 PLUGIN_API addRef() override { return static_cast<uint32>(++mReferences); }
    uint32 PLUGIN_API release() override { return static_cast<uint32>(--mReferences); }

    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override;
    int32 PLUGIN_API countClasses() override;
    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override;
    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override;
    tresult PLUGIN_API getClassInfoUnicode(int32 index, PClassInfoW* info) override;
    tresult PLUGIN_API createInstance(FIDString classID, FIDString interfaceID, void** object) override;
    tresult PLUGIN_API setHostContext(FUnknown* context) override;

private:
    std::atomic<int> mReferences{0};
};

} // namespace vynfixtures
