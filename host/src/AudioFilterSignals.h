#pragma once

#include "vyncore/Export.h"
#include "vynmediatypes/ChannelMap.h"

#include <boost/signals2/signal.hpp>

#include <cstdint>

namespace vynaudiofilterhost {

/// What a filter announces, as the part of AudioFilter that listeners meet. AudioFilter derives from it and alone fires
/// the signals, on the thread of whoever caused the news; the latency signal on the main thread only.
///
/// A slot that is connected stays so until the connection is ended or the filter has gone.
class VYN_API AudioFilterSignals {
public:
    /// A side of a filter.
    enum Direction : std::int32_t { kDirectionInput = 0, kDirectionOutput = 1 };

    using PresetChangedSignal = boost::signals2::signal<void()>;
    /// Index of the parameter, normalized value.
    using AutomatedParameterChangeSignal = boost::signals2::signal<void(int, float)>;
    using ParameterPropertiesChangedSignal = boost::signals2::signal<void()>;
    /// Index of the parameter or a negative number, whether the gesture begins.
    using EditingStateChangeSignal = boost::signals2::signal<void(int, bool)>;
    /// The side, the map before, the map since.
    using ChannelMapChangedSignal =
        boost::signals2::signal<void(Direction, vynmediatypes::ChannelMap, vynmediatypes::ChannelMap)>;
    using BusConfigurationChangedSignal = boost::signals2::signal<void()>;
    using TargetFormatChangedSignal = boost::signals2::signal<void()>;
    /// Whether the filter is suspended now.
    using SuspendedStateChangedSignal = boost::signals2::signal<void(bool)>;
    using LatencyChangedSignal = boost::signals2::signal<void()>;

    AudioFilterSignals(AudioFilterSignals const&) = delete;
    AudioFilterSignals& operator=(AudioFilterSignals const&) = delete;

    /// Connect a slot to a signal; disconnect through the result.
    /// [any-thread]
    boost::signals2::connection ConnectPresetChanged(PresetChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectAutomatedParameterChange(AutomatedParameterChangeSignal::slot_type const& slot);
    boost::signals2::connection
    ConnectParameterPropertiesChanged(ParameterPropertiesChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectEditingStateChange(EditingStateChangeSignal::slot_type const& slot);
    boost::signals2::connection ConnectChannelMapChanged(ChannelMapChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectBusConfigurationChanged(BusConfigurationChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectTargetFormatChanged(TargetFormatChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectSuspendedStateChanged(SuspendedStateChangedSignal::slot_type const& slot);
    boost::signals2::connection ConnectLatencyChanged(LatencyChangedSignal::slot_type const& slot);

    /// For listeners that want more than a connection, such as a count of the slots.
    /// [main-thread]
    SuspendedStateChangedSignal& GetSuspendedStateChangedSignal() noexcept { return mSuspendedStateChanged; }

protected:
    AudioFilterSignals();
    ~AudioFilterSignals();

    /// For a subclass that announces such news itself.
    /// [main-thread]
    ParameterPropertiesChangedSignal& GetParameterPropertiesChangedSignal() noexcept {
        return mParameterPropertiesChanged;
    }
    AutomatedParameterChangeSignal& GetAutomatedParameterChangeSignal() noexcept { return mAutomatedParameterChange; }

private:
    friend class AudioFilter;

    PresetChangedSignal mPresetChanged;
    AutomatedParameterChangeSignal mAutomatedParameterChange;
    ParameterPropertiesChangedSignal mParameterPropertiesChanged;
    EditingStateChangeSignal mEditingStateChange;
    ChannelMapChangedSignal mChannelMapChanged;
    BusConfigurationChangedSignal mBusConfigurationChanged;
    TargetFormatChangedSignal mTargetFormatChanged;
    SuspendedStateChangedSignal mSuspendedStateChanged;
    LatencyChangedSignal mLatencyChanged;
};

} // namespace vynaudiofilterhost
