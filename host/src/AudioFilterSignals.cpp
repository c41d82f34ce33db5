#include "vynaudiofilterhost/AudioFilterSignals.h"

namespace vynaudiofilterhost {

AudioFilterSignals::AudioFilterSignals() = default;

AudioFilterSignals::~AudioFilterSignals() = default;

boost::signals2::connection AudioFilterSignals::ConnectPresetChanged(PresetChangedSignal::slot_type const& slot) {
    return mPresetChanged.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectAutomatedParameterChange(AutomatedParameterChangeSignal::slot_type const& slot) {
    return mAutomatedParameterChange.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectParameterPropertiesChanged(ParameterPropertiesChangedSignal::slot_type const& slot) {
    return mParameterPropertiesChanged.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectEditingStateChange(EditingStateChangeSignal::slot_type const& slot) {
    return mEditingStateChange.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectChannelMapChanged(ChannelMapChangedSignal::slot_type const& slot) {
    return mChannelMapChanged.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectBusConfigurationChanged(BusConfigurationChangedSignal::slot_type const& slot) {
    return mBusConfigurationChanged.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectTargetFormatChanged(TargetFormatChangedSignal::slot_type const& slot) {
    return mTargetFormatChanged.connect(slot);
}

boost::signals2::connection
AudioFilterSignals::ConnectSuspendedStateChanged(SuspendedStateChangedSignal::slot_type const& slot) {
    return mSuspendedStateChanged.connect(slot);
}

boost::signals2::connection AudioFilterSignals::ConnectLatencyChanged(LatencyChangedSignal::slot_type const& slot) {
    return mLatencyChanged.connect(slot);
}

} // namespace vynaudiofilterhost
