#pragma once

#include "vyncore/Export.h"
#include "vynmediatypes/AudioBusDescription.h"
#include "vynscripting/ScriptObject.h"

#include <vector>

/// What scripts see of channel layouts and buses.
namespace vynmediatypes::scripting {

/// A bus, as scripts see it: an object of the class "AudioBusDescription" with its own copy of the description. Scripts
/// read it and hand it on; they can't change it.
class VYN_API AudioBusDescriptionObject : public vynscripting::ScriptObject {
public:
    /// A main bus without a name and without channels.
    AudioBusDescriptionObject();
    ~AudioBusDescriptionObject() override;

    /// Adds the items to the definition that is being built.
    /// [main-thread]
    static void DefineObject();

    /// [any-thread]
    static char const* GetClassname() noexcept;
    static char const* GetDescription() noexcept;

    /// Makes this the object of another bus.
    /// [main-thread]
    void Initialize(AudioBusDescription const& bus);

    /// Valid until the object is initialized anew or goes.
    /// [main-thread]
    AudioBusDescription const& GetBusDescription() const noexcept { return mBus; }

    /// Two buses are equal when name, type and channels are.
    /// [main-thread]
    bool IsEqual(boost::intrusive_ptr<vynscripting::ScriptObject> const& other) const override;

private:
    vyncore::UString GetName() const;
    vyncore::UString GetType() const;
    vyncore::UString GetLayout() const;
    std::vector<vyncore::UString> GetChannels() const;
    int GetChannelCount() const;

    AudioBusDescription mBus;
};

} // namespace vynmediatypes::scripting
