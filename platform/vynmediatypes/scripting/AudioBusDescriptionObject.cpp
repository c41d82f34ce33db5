#include "vynmediatypes/scripting/AudioBusDescriptionObject.h"

#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"

#include <memory>

namespace vynmediatypes::scripting {

namespace {

vynscripting::factory::ScriptObjectDefinitionRegistrar const
    kRegistrar([](vynscripting::definition::ScriptDefinitions& definitions) {
        using Definition = vynscripting::definition::ScriptObjectDefinition<AudioBusDescriptionObject>;
        definitions.AddObjectDefinition(AudioBusDescriptionObject::GetClassname(), std::make_unique<Definition>());
    });

} // namespace

AudioBusDescriptionObject::AudioBusDescriptionObject() : ScriptObject(GetClassname()) {}
AudioBusDescriptionObject::~AudioBusDescriptionObject() = default;

char const* AudioBusDescriptionObject::GetClassname() noexcept {
    return "AudioBusDescription";
}

char const* AudioBusDescriptionObject::GetDescription() noexcept {
    return "A bus: its name, its channels in order, and what it is for.";
}

void AudioBusDescriptionObject::DefineObject() {
    using Item = vynscripting::definition::ScriptItemDefinition<AudioBusDescriptionObject>;
    constexpr unsigned kFlags = vynscripting::definition::ScriptItemFlags::kScriptable;
    auto& definition = *vynscripting::definition::ScriptObjectDefinitionBase::sCurrent;
    definition.AddOrModifyNamespace("vynmediatypes", 0);
    definition.AddOrModifyNamespace(GetClassname(),
                                    vynscripting::definition::ScriptObjectDefinitionBase::kNamespaceIsClass);
    definition.AddProperty(
        Item::Property({"name", "The name of the bus."}, &AudioBusDescriptionObject::GetName, kFlags));
    definition.AddProperty(Item::Property({"type", "What the bus is for: \"main\" or \"sidechain\"."},
                                          &AudioBusDescriptionObject::GetType, kFlags));
    definition.AddProperty(Item::Property({"layout", "The layout of the bus in words, such as \"Stereo\"."},
                                          &AudioBusDescriptionObject::GetLayout, kFlags));
    definition.AddProperty(Item::Property({"channels", "The channels of the bus in order, such as \"L\" and \"R\"."},
                                          &AudioBusDescriptionObject::GetChannels, kFlags));
    definition.AddProperty(Item::Property({"channelCount", "The number of channels of the bus."},
                                          &AudioBusDescriptionObject::GetChannelCount, kFlags));
}

void AudioBusDescriptionObject::Initialize(AudioBusDescription const& bus) {
    mBus = bus;
}

bool AudioBusDescriptionObject::IsEqual(boost::intrusive_ptr<vynscripting::ScriptObject> const& other) const {
    if (!ScriptObject::IsEqual(other))
        return false;
    auto const* const object = dynamic_cast<AudioBusDescriptionObject const*>(other.get());
    return object && object->mBus == mBus;
}

vyncore::UString AudioBusDescriptionObject::GetName() const {
    return mBus.GetName();
}

vyncore::UString AudioBusDescriptionObject::GetType() const {
    return mBus.GetType() == AudioBusDescription::kTypeSideChain ? u"sidechain" : u"main";
}

vyncore::UString AudioBusDescriptionObject::GetLayout() const {
    return AudioChannelLayoutDescription(mBus.GetLayout());
}

std::vector<vyncore::UString> AudioBusDescriptionObject::GetChannels() const {
    std::vector<vyncore::UString> texts;
    for (AudioChannelDescription const channel : mBus.GetLayout())
        texts.push_back(AudioChannelDescriptionName(channel.GetLabel()));
    return texts;
}

int AudioBusDescriptionObject::GetChannelCount() const {
    return mBus.GetChannelCount();
}

} // namespace vynmediatypes::scripting
