#include "vynaudiofilterhost/VST3/src/HostRunLoop.h"

#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/threads/MainThreadCalls.h"

#include "pluginterfaces/gui/iplugview.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <vector>

// The interfaces of Linux are declared by the headers and defined nowhere.
namespace Steinberg::Linux {
DEF_CLASS_IID(IEventHandler)
DEF_CLASS_IID(ITimerHandler)
DEF_CLASS_IID(IRunLoop)
} // namespace Steinberg::Linux

namespace vynaudiofilterhost::vst3 {

using Steinberg::kInvalidArgument;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::tresult;
using Steinberg::Linux::FileDescriptor;
using Steinberg::Linux::IEventHandler;
using Steinberg::Linux::IRunLoop;
using Steinberg::Linux::ITimerHandler;
using Steinberg::Linux::TimerInterval;

namespace {

/// A timer that a plug-in has registered; the calls in the queue find out by it whether it still stands.
struct Timer {
    ITimerHandler* handler;
    unsigned milliseconds;
};

void ScheduleTimer(std::shared_ptr<Timer> const& timer) {
    std::weak_ptr<Timer> const waiting = timer;
    vyncore::threads::AsyncCallFromMainThread(
        [waiting] {
            auto const due = waiting.lock();
            if (!due)
                return;
            Guarded([&due] { due->handler->onTimer(); });
            // Gone, when its own call has unregistered it.
            if (due.use_count() > 1)
                ScheduleTimer(due);
        },
        timer->milliseconds);
}

class LinuxRunLoop final : public HostRunLoop, public IRunLoop {
public:
    ~LinuxRunLoop() override { Close(); }

    void* Query(Steinberg::TUID const id) noexcept override {
        bool const isLoop = std::memcmp(id, IRunLoop::iid.toTUID(), sizeof(Steinberg::TUID)) == 0;
        return isLoop ? static_cast<IRunLoop*>(this) : nullptr;
    }

    void Close() noexcept override {
        mOpen = false;
        for (auto const& [watch, handler] : mWatches)
            vyncore::threads::UnwatchDescriptor(watch);
        mWatches.clear();
        mTimers.clear();
    }

    tresult PLUGIN_API queryInterface(Steinberg::TUID const id, void** object) override {
        if (!id || !object)
            return kInvalidArgument;
        bool const isUnknown = std::memcmp(id, FUnknown::iid.toTUID(), sizeof(Steinberg::TUID)) == 0;
        *object = isUnknown ? static_cast<IRunLoop*>(this) : Query(id);
        return *object ? kResultOk : Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

    tresult PLUGIN_API registerEventHandler(IEventHandler* handler, FileDescriptor descriptor) override {
        if (!handler || descriptor < 0)
            return kInvalidArgument;
        if (!MayRegister())
            return kResultFalse;
        std::uint64_t const watch = vyncore::threads::WatchDescriptor(
            descriptor, [handler, descriptor] { Guarded([=] { handler->onFDIsSet(descriptor); }); });
        if (watch == 0)
            return kResultFalse;
        mWatches.emplace(watch, handler);
        return kResultOk;
    }

    tresult PLUGIN_API unregisterEventHandler(IEventHandler* handler) override {
        if (!IsOnMainThread())
            return kResultFalse;
        std::size_t const removed = std::erase_if(mWatches, [handler](auto const& entry) {
            if (entry.second != handler)
                return false;
            vyncore::threads::UnwatchDescriptor(entry.first);
            return true;
        });
        return removed != 0 ? kResultOk : kResultFalse;
    }

    tresult PLUGIN_API registerTimer(ITimerHandler* handler, TimerInterval milliseconds) override {
        if (!handler)
            return kInvalidArgument;
        if (!MayRegister())
            return kResultFalse;
        constexpr TimerInterval kShortest = 1;
        constexpr TimerInterval kLongest = std::numeric_limits<unsigned>::max();
        auto const interval = static_cast<unsigned>(std::clamp(milliseconds, kShortest, kLongest));
        mTimers.push_back(std::make_shared<Timer>(Timer{handler, interval}));
        ScheduleTimer(mTimers.back());
        return kResultOk;
    }

    tresult PLUGIN_API unregisterTimer(ITimerHandler* handler) override {
        if (!IsOnMainThread())
            return kResultFalse;
        std::size_t const removed =
            std::erase_if(mTimers, [handler](auto const& timer) { return timer->handler == handler; });
        return removed != 0 ? kResultOk : kResultFalse;
    }

private:
    bool MayRegister() const { return IsOnMainThread() && mOpen; }

    static bool IsOnMainThread() {
        if (CurrentThreadIDIsMainThreadID())
            return true;
        vyncore::debug::Trace(0, "HostRunLoop", "VST3: run loop used on non-main thread");
        return false;
    }

    bool mOpen = true;
    std::map<std::uint64_t, IEventHandler*> mWatches; ///< by number
    std::vector<std::shared_ptr<Timer>> mTimers;
};

} // namespace

HostRunLoop::~HostRunLoop() = default;

std::shared_ptr<HostRunLoop> HostRunLoop::Make() {
    return std::make_shared<LinuxRunLoop>();
}

Steinberg::FIDString GetViewPlatformType() noexcept {
    return Steinberg::kPlatformTypeX11EmbedWindowID;
}

} // namespace vynaudiofilterhost::vst3
