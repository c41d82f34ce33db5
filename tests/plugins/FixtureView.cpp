#include "plugins/FixtureView.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace vynfixtures {
namespace {

constexpr FixtureObject kView = FixtureObject::View;

/// Handlers that no view owns: what calls them too late shows in the log and does no harm.
template <class Interface>
class StaticHandler : public Interface {
public:
    tresult PLUGIN_API queryInterface(TUID const, void** object) override {
        *object = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

class TimerHandler final : public StaticHandler<Linux::ITimerHandler> {
public:
    void PLUGIN_API onTimer() override { Record(kView, "onTimer"); }
};

/// Owns a pipe, from its first use to the module's end.
class PipeHandler final : public StaticHandler<Linux::IEventHandler> {
public:
    ~PipeHandler() {
        for (int const end : mEnds)
            if (end >= 0)
                close(end);
    }

    /// The end to read from, with a byte to read.
    int Fill() {
        if (mEnds[0] < 0 && pipe2(mEnds, O_CLOEXEC | O_NONBLOCK) != 0)
            return -1;
        return write(mEnds[1], "x", 1) == 1 ? mEnds[0] : -1;
    }

    void PLUGIN_API onFDIsSet(Linux::FileDescriptor descriptor) override {
        char byte;
        bool const taken = takesByte && read(descriptor, &byte, 1) == 1;
        Record(kView, "onFDIsSet", {taken});
    }

    bool takesByte = true;

private:
    int mEnds[2] = {-1, -1};
};

TimerHandler theTimer;
PipeHandler thePipe;

void RecordRect(char const* name, FixtureRect const& rect) {
    char text[40];
    std::snprintf(text, sizeof text, "%d %d %d %d", rect.left, rect.top, rect.right, rect.bottom);
    Record(kView, name, {.detail = text});
}

} // namespace

FixtureView::FixtureView(FixtureViewConfiguration const& configuration)
    : mConfiguration(configuration), mSize(configuration.size), mResizesLeft(configuration.resizesInOnSize) {
    ++ModuleState::Get().liveObjects;
    Record(kView, "created");
}

FixtureView::~FixtureView() {
    Record(kView, "destroyed");
    --ModuleState::Get().liveObjects;
}

tresult FixtureView::queryInterface(TUID const id, void** object) {
    bool const known = SameID(id, FUnknown_iid) || SameID(id, IPlugView_iid);
    *object = known ? this : nullptr;
    if (!known)
        return kNoInterface;
    addRef();
    return kResultOk;
}

uint32 FixtureView::release() {
    uint32 const left = --mReferences;
    if (left == 0)
        delete this;
    return left;
}

tresult FixtureView::isPlatformTypeSupported(FIDString type) {
    Record(kView, "isPlatformTypeSupported", {.detail = type});
    return kResultFalse;
}

tresult FixtureView::attached(void* parent, FIDString type) {
    Record(kView, "attached",
           {.extra = {static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(parent))}, .detail = type});
    if (mConfiguration.attachedFails)
        return kResultFalse;
    if (mConfiguration.usesRunLoop)
        Register();
    AskForSize(mConfiguration.resizeInAttached);
    return kResultOk;
}

tresult FixtureView::removed() {
    Record(kView, "removed");
    if (mConfiguration.usesRunLoop && !mConfiguration.leavesHandlers)
        Unregister();
    return kResultOk;
}

tresult FixtureView::getSize(ViewRect* size) {
    Record(kView, "getSize");
    if (mConfiguration.sizeFails)
        return kResultFalse;
    *size = ViewRect(mSize.left, mSize.top, mSize.right, mSize.bottom);
    return kResultOk;
}

tresult FixtureView::onSize(ViewRect* size) {
    mSize = {size->left, size->top, size->right, size->bottom};
    RecordRect("onSize", mSize);
    if (mResizesLeft == 0)
        return kResultOk;
    mResizesLeft -= mResizesLeft > 0 ? 1 : 0;
    AskForSize(mConfiguration.resizeInOnSize);
    return kResultOk;
}

tresult FixtureView::setFrame(IPlugFrame* frame) {
    mFrame = frame;
    Record(kView, "setFrame", {frame != nullptr});
    return kResultOk;
}

void FixtureView::AskForSize(FixtureRect const& wanted) {
    if (wanted == FixtureRect())
        return;
    ViewRect rect(wanted.left, wanted.top, wanted.right, wanted.bottom);
    tresult const result = mFrame != nullptr ? mFrame->resizeView(this, &rect) : kNotInitialized;
    Record(kView, "host:resizeView", {result});
}

void FixtureView::Register() {
    auto const loop = Ask<Linux::IRunLoop>(mFrame, Linux::IRunLoop_iid);
    if (!loop)
        return;
    thePipe.takesByte = mConfiguration.readsPipe;
    Record(kView, "host:registerTimer", {loop->registerTimer(&theTimer, 1)});
    Record(kView, "host:registerEventHandler", {loop->registerEventHandler(&thePipe, thePipe.Fill())});
}

void FixtureView::Unregister() {
    auto const loop = Ask<Linux::IRunLoop>(mFrame, Linux::IRunLoop_iid);
    if (!loop)
        return;
    Record(kView, "host:unregisterTimer", {loop->unregisterTimer(&theTimer)});
    Record(kView, "host:unregisterEventHandler", {loop->unregisterEventHandler(&thePipe)});
}

} // namespace vynfixtures
