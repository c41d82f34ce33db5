#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vynscripting/ScriptObject.h"
#include "vynscripting/ScriptTypes.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <functional>
#include <vector>

namespace vynaudiofilterhost {

/// A filter, as scripts see it: an object of the class "AudioFilter". It holds no filter but a function that yields the
/// present one, asks it anew at each call of an item and hands the call on. So it may outlive a filter, and another
/// filter may take the place of the one that was there.
///
/// Life: made; Initialize, once; used by scripts. Without a provider, or while that yields null, every item throws
/// vynscripting::ParameterErrorException. What the filter throws goes on to the caller.
class VYN_API AudioFilterObject : public vynscripting::ScriptObject {
public:
    AudioFilterObject();
    /// @param name  of the class, for one that has more to it
    explicit AudioFilterObject(char const* name);
    ~AudioFilterObject() override;

    /// Adds the items to the definition that is being built.
    /// [main-thread]
    static void DefineObject();

    /// [any-thread]
    static char const* GetClassname() noexcept;
    static char const* GetDescription() noexcept;

    /// Takes the function that yields the filter, or null while there is none. The first call alone counts.
    /// [main-thread]
    void Initialize(std::function<boost::intrusive_ptr<AudioFilter>()> const& provider);

    /// Objects are equal when they stand for the same filter, and also when both have none.
    /// [main-thread]
    bool IsEqual(boost::intrusive_ptr<vynscripting::ScriptObject> const& other) const override;

protected:
    /// The present filter.
    /// @param required  whether to throw ParameterErrorException instead of returning null
    /// [main-thread]
    boost::intrusive_ptr<AudioFilter> GetAudioFilter(bool required) const;

private:
    using UString = vyncore::UString;
    using Objects = std::vector<vynscripting::ScriptObjectPtr>;

    UString GetDisplayName();
    UString GetID();
    int GetParameterCount() const;
    float GetParameter(int index) const;
    bool SetParameter(int index, float value);
    Objects GetInputBuses();
    Objects GetOutputBuses();
    bool RequestBusConfiguration(Objects const& inputs, Objects const& outputs) const;
    int GetFilterChannelForTarget(bool isInput, int targetChannel) const;
    bool AssignChannelMapping(bool isInput, int filterChannel, int targetChannel);
    bool RemoveChannelMapping(bool isInput, int filterChannel);

    Objects ConvertBuses(AudioFilter::Buses const& buses) const;
    AudioFilter::Buses ConvertBuses(Objects const& objects) const;

    bool mInitialized = false;
    std::function<boost::intrusive_ptr<AudioFilter>()> mFilterProvider;
};

} // namespace vynaudiofilterhost
