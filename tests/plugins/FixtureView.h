#pragma once

#include "plugins/FixtureConfiguration.h"
#include "plugins/FixtureInterfaces.h"
#include "plugins/ModuleState.h"

#include "pluginterfaces/gui/iplugview.h"

#include <atomic>

namespace vynfixtures {

/// The view that a fixture's controller makes: it draws nothing, asks its frame for what the configuration says, and
/// files each call. Born with one reference; the last release destroys it. Counts among the live objects.
class FixtureView final : public IPlugView {
public:
    explicit FixtureView(FixtureViewConfiguration const& configuration);
    FixtureView(FixtureView const&) = delete;
    FixtureView& operator=(FixtureView const&) = delete;

    tresult PLUGIN_API queryInterface(TUID const id, void** object) override;
    uint32 PLUGIN_API addRef() override { return ++mReferences; }
    uint32 PLUGIN_API release() override;

    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override;
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    tresult PLUGIN_API removed() override;
    tresult PLUGIN_API onWheel(float) override { return kResultFalse; }
    tresult PLUGIN_API onKeyDown(char16, int16, int16) override { return kResultFalse; }
    tresult PLUGIN_API onKeyUp(char16, int16, int16) override { return kResultFalse; }
    tresult PLUGIN_API getSize(ViewRect* size) override;
    tresult PLUGIN_API onSize(ViewRect* size) override;
    tresult PLUGIN_API onFocus(TBool) override { return kResultFalse; }
    tresult PLUGIN_API setFrame(IPlugFrame* frame) override;
    tresult PLUGIN_API canResize() override { return kResultFalse; }
    tresult PLUGIN_API checkSizeConstraint(ViewRect*) override { return kResultFalse; }

private:
    ~FixtureView();

    void AskForSize(FixtureRect const& wanted);
    void Register();
    void Unregister();

    FixtureViewConfiguration const mConfiguration;
    FixtureRect mSize;
    int mResizesLeft;
    IPlugFrame* mFrame = nullptr;
    std::atomic<uint32> mReferences{1};
};

} // namespace vynfixtures
