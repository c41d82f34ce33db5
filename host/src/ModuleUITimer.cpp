#include "vynaudiofilterhost/ModuleUITimer.h"

#include "vyncore/debug/DebugMonitor.h"
#include "vyncore/debug/DebugStatisticCounterRolling.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/threads/MainThreadCalls.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <boost/signals2/dummy_mutex.hpp>
#include <boost/signals2/signal_type.hpp>

#include <cstdint>

namespace vynaudiofilterhost {

using vyncore::UTF16StringStream;
using vyncore::string::NumberToString;
using vyncore::utility::HighPrecisionTime;

namespace {

constexpr char const* kMonitorName = "vynaudiofilterhost.ModuleUITimer.Impl";
constexpr unsigned kPeriodMilliseconds = 20;
constexpr std::uint64_t kPeriodNanos = 20'000'000;
constexpr std::uint64_t kLatenessNanos = 10'000'000;

using Counter = vyncore::debug::DebugStatisticCounterRolling<double, 64>;

/// Runs every slot even when one throws: a slot's work ends in plug-in code, and one plug-in must not stop the
/// message queues of all filters.
struct RunAll {
    using result_type = void;

    template <class Iterator>
    void operator()(Iterator slot, Iterator end) const {
        for (; slot != end; ++slot) {
            try {
                *slot;
            } catch (...) {
                vyncore::debug::Trace(0, "ModuleUITimer", "a slot of the tick threw");
            }
        }
    }
};

namespace keywords = boost::signals2::keywords;
using TickSignal = boost::signals2::signal_type<void(), keywords::combiner_type<RunAll>,
                                                keywords::mutex_type<boost::signals2::dummy_mutex>>::type;

double ToMilliseconds(std::uint64_t stamps) {
    return static_cast<double>(HighPrecisionTime::ConvertToNanos(stamps)) / 1e6;
}

void WriteFigures(UTF16StringStream& stream, char const* title, Counter const& counter) {
    stream << title << NumberToString(counter.GetLast(), 3, 0) << " ms  / "
           << NumberToString(counter.GetAverage(), 3, 2) << " / " << NumberToString(counter.GetMinimum(), 3, 0)
           << " ms  / " << NumberToString(counter.GetMaximum(), 3, 0) << " ms \n";
}

} // namespace

class ModuleUITimer::Impl : public std::enable_shared_from_this<Impl> {
public:
    Impl();
    Impl(Impl const&) = delete;
    Impl& operator=(Impl const&) = delete;
    ~Impl() { vyncore::debug::UnregisterDebugMonitorCallback(kMonitorName); }

    boost::signals2::connection Connect(boost::signals2::slot<void()> const& slot);
    void CheckForElapsedTimer();

private:
    void Schedule();
    void Tick();
    void WriteMonitor(UTF16StringStream& stream) const;

    TickSignal mTick;
    bool mRunning = false;
    std::uint64_t mLastTick = 0;
    std::uint64_t mNextDue = 0;
    Counter mMeasuredPeriod;
    Counter mTickLoad;
};

ModuleUITimer::Impl::Impl() {
    vyncore::debug::RegisterDebugMonitorCallback(kMonitorName,
                                                 [this](UTF16StringStream& stream) { WriteMonitor(stream); });
}

boost::signals2::connection ModuleUITimer::Impl::Connect(boost::signals2::slot<void()> const& slot) {
    auto connection = mTick.connect(slot);
    if (!mRunning)
        Schedule();
    return connection;
}

void ModuleUITimer::Impl::CheckForElapsedTimer() {
    auto const lateness = HighPrecisionTime::ConvertFromNanos(kLatenessNanos);
    if (HighPrecisionTime::GetCurrentTimeStamp() <= mNextDue + lateness)
        return;
    // First the period: a slot may come here again from a loop of its own.
    mNextDue += HighPrecisionTime::ConvertFromNanos(kPeriodNanos);
    mTick();
}

void ModuleUITimer::Impl::Schedule() {
    mRunning = true;
    mNextDue = HighPrecisionTime::GetCurrentTimeStamp() + HighPrecisionTime::ConvertFromNanos(kPeriodNanos);
    auto const tick = [weak = weak_from_this()] {
        if (auto const self = weak.lock())
            self->Tick();
    };
    vyncore::threads::AsyncCallFromMainThread(tick, kPeriodMilliseconds);
}

void ModuleUITimer::Impl::Tick() {
    if (mTick.empty()) {
        mRunning = false;
        mLastTick = 0;
        return;
    }
    auto const start = HighPrecisionTime::GetCurrentTimeStamp();
    mTick();
    if (mLastTick != 0 && mLastTick < start)
        mMeasuredPeriod.Add(ToMilliseconds(start - mLastTick));
    mLastTick = start;
    auto const load = ToMilliseconds(HighPrecisionTime::GetCurrentTimeStamp() - start);
    if (load > 0)
        mTickLoad.Add(load);
    Schedule();
}

void ModuleUITimer::Impl::WriteMonitor(UTF16StringStream& stream) const {
    stream << "Timer Period:  " << kPeriodMilliseconds << " ms \n";
    WriteFigures(stream, "Measured:  ", mMeasuredPeriod);
    WriteFigures(stream, "Load:  ", mTickLoad);
    auto const connections = mTick.num_slots();
    stream << NumberToString(kPeriodMilliseconds, 4, 0) << " ms: " << connections
           << (connections == 1 ? " connection" : " connections");
}

ModuleUITimer::ModuleUITimer() : mImpl(std::make_shared<Impl>()) {}
ModuleUITimer::~ModuleUITimer() = default;

ModuleUITimer& ModuleUITimer::GetInstance() {
    static ModuleUITimer instance;
    return instance;
}

boost::signals2::connection ModuleUITimer::ConnectTick(boost::signals2::slot<void()> const& slot) {
    return mImpl->Connect(slot);
}

void ModuleUITimer::CheckForElapsedTimer() {
    mImpl->CheckForElapsedTimer();
}

} // namespace vynaudiofilterhost
