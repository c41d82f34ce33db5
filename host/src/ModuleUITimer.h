#pragma once

#include "vyncore/Export.h"

#include <boost/signals2/connection.hpp>
#include <boost/signals2/slot.hpp>

#include <memory>

namespace vynaudiofilterhost {

/// The one tick of the whole library on the main thread, about every 20 milliseconds while anybody is connected.
/// Every filter that runs or has an open editor hangs on it. It rides on the call queue of the main thread
/// (vyncore::threads::RunDueCalls) and starts no thread; it lives to the end of the process.
///
/// Life cycle: stopped; the first ConnectTick starts it; the first tick that finds nobody connected stops it.
class VYN_API ModuleUITimer {
public:
    ModuleUITimer(ModuleUITimer const&) = delete;
    ModuleUITimer& operator=(ModuleUITimer const&) = delete;

    /// [main-thread]
    static ModuleUITimer& GetInstance();

    /// Calls the slot on every tick until the connection is cut; never at once. The period runs from the end of a
    /// tick. A slot that throws is traced, and doesn't keep the others from their tick.
    /// [main-thread]
    boost::signals2::connection ConnectTick(boost::signals2::slot<void()> const& slot);

    /// For an application whose queue is held up, as by a modal loop of its own: ticks at once when the next tick is
    /// more than 10 milliseconds late, and does nothing otherwise. The tick in the queue stays where it is.
    /// [main-thread]
    void CheckForElapsedTimer();

private:
    class Impl;

    ModuleUITimer();
    ~ModuleUITimer();

    std::shared_ptr<Impl> mImpl;
};

} // namespace vynaudiofilterhost
