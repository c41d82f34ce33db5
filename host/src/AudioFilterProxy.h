#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/Export.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost {

/// Stands in for a filter whose plug-in isn't there. It renders nothing, all its outputs are silent; but it keeps the
/// state that makes up the filter, so that a track can be stored and loaded as if the filter were there, and the filter
/// can be brought back when the plug-in is. Made by the application alone, and held through boost::intrusive_ptr.
///
/// 1. Settings are kept as they are, whether or not anyone could read them, and alone bring the state back: values that
///    are set on the proxy show here and go no further.
/// 2. Whatever else an AudioFilter keeps it keeps as well: buses, rate, block size, channel maps, the preset's name.
class VYN_API AudioFilterProxy final : public AudioFilter {
public:
    /// For a filter of which nothing but this is known. Its parameters have the value 0, no names, and aren't shown;
    /// its settings are empty.
    /// @param parameterCount  more than a million is taken as none
    /// @param usesChunkData   whether its presets are chunks
    /// [main-thread]
    AudioFilterProxy(UString const& uniqueID, UString const& displayName, unsigned int parameterCount,
                     bool usesChunkData);

    /// Takes the state of a living filter, which stays as it is. The main target bus, names of parameters and the host
    /// stay behind. Without a filter the proxy is one without an ID. Throws what the filter throws.
    /// [main-thread]
    explicit AudioFilterProxy(boost::intrusive_ptr<AudioFilter> const& filter);

    /// [main-thread]
    ~AudioFilterProxy() override;

    /// The real filter, suspended, with this state as far as it takes it: a new one each time. Null, and nothing has
    /// changed, while the plug-in is missing or disabled. The proxy stays as it is; the caller swaps one for the other.
    /// Throws what the filter throws.
    /// [main-thread]
    boost::intrusive_ptr<AudioFilter> CreateAudioFilterFromZombieState() const;

    /// The name of a parameter, which only the application can know. Nothing for a parameter that isn't there.
    /// [main-thread]
    void SetParameterDisplayName(int index, UString const& name);

    /// Always true.
    /// [any-thread]
    bool IsProxy() const override;

    /// Parameters by their index; one that isn't there has the value 0 and no information.
    /// [main-thread]
    int GetParameterCount() const override;
    float GetParameter(int index) const override;
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override;

    /// Keeps the value, if the parameter is there; counts a change in any case.
    /// [main-thread]
    void SetParameter(int index, float value) override;

    /// [main-thread]
    bool DoPresetsUseChunkData() const override;

    /// Takes the preset over as it is; parameters keep their values and nothing is announced. Always true.
    /// [main-thread]
    bool LoadSettings(PresetData const& preset) override;

    /// Makes the preset the one that was taken over.
    /// [main-thread]
    void SaveSettings(PresetData& preset) const override;

private:
    void AddParameter(float value, AudioFilterParameterInfoUnit unit, bool canBeAutomated);
    void TakeOver(AudioFilter& filter);
    bool HasParameter(int index) const noexcept;

    vyncore::proplist::PropList mZombieList;
    /// Filters and listeners that it is handed to may take references.
    boost::intrusive_ptr<PresetData> const mZombiePreset{new PresetData(mZombieList)};
    std::vector<boost::intrusive_ptr<AudioFilterParameterInfo>> mParameterInfos;
    std::vector<float> mParameterValues;
    bool mUsesChunkData = false;
};

} // namespace vynaudiofilterhost
