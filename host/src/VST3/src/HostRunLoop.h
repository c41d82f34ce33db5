#pragma once

#include "pluginterfaces/base/funknown.h"

#include <memory>

/// What differs from system to system between a plug-in's view and its host.
namespace vynaudiofilterhost::vst3 {

/// The kind of window that views are attached to, as IPlugView names it: of X11 on Linux.
/// [any-thread]
Steinberg::FIDString GetViewPlatformType() noexcept;

/// The run loop that a system's plug-ins expect of their host, when there is one: on Linux Steinberg::Linux::IRunLoop.
/// Timers and descriptors ride on the main thread's call queue, with an editor open or without. A filter and its
/// editor share one.
///
/// 1. Handlers may register and unregister themselves and each other inside their own calls.
/// 2. Handlers are not counted: a plug-in whose handler goes has unregistered it, or has been taken down.
/// 3. Nothing of the plug-in's is called from Close on.
class HostRunLoop {
public:
    /// [main-thread]
    static std::shared_ptr<HostRunLoop> Make();
    virtual ~HostRunLoop();
    HostRunLoop(HostRunLoop const&) = delete;
    HostRunLoop& operator=(HostRunLoop const&) = delete;

    /// The interface of that ID, when it is the run loop's; its references are counted for form only. Null for others.
    /// [any-thread]
    virtual void* Query(Steinberg::TUID const iid) noexcept = 0;

    /// Forgets all handlers, and refuses new ones from here on.
    /// [main-thread]
    virtual void Close() noexcept = 0;

protected:
    HostRunLoop() = default;
};

} // namespace vynaudiofilterhost::vst3
