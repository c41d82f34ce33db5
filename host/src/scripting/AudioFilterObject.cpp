#include "vynaudiofilterhost/scripting/AudioFilterObject.h"

#include "vynmediatypes/scripting/AudioBusDescriptionObject.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"
#include "vynscripting/ParameterErrorException.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <memory>
#include <utility>

namespace vynaudiofilterhost {

namespace {

using vynmediatypes::scripting::AudioBusDescriptionObject;
using vynscripting::ScriptObject;

vynscripting::factory::ScriptObjectDefinitionRegistrar const
    kRegistrar([](vynscripting::definition::ScriptDefinitions& definitions) {
        using Definition = vynscripting::definition::ScriptObjectDefinition<AudioFilterObject>;
        definitions.AddObjectDefinition(AudioFilterObject::GetClassname(), std::make_unique<Definition>());
    });

constexpr AudioFilter::Direction DirectionOf(bool isInput) noexcept {
    return isInput ? AudioFilter::kDirectionInput : AudioFilter::kDirectionOutput;
}

} // namespace

AudioFilterObject::AudioFilterObject() : AudioFilterObject(GetClassname()) {}

AudioFilterObject::AudioFilterObject(char const* name) : ScriptObject(name) {}

// What a provider holds may, as it goes, come back to this object: it finds one without a provider.
AudioFilterObject::~AudioFilterObject() {
    mInitialized = false;
    decltype(mFilterProvider)().swap(mFilterProvider);
}

char const* AudioFilterObject::GetClassname() noexcept {
    return "AudioFilter";
}

char const* AudioFilterObject::GetDescription() noexcept {
    return "AudioFilter";
}

void AudioFilterObject::DefineObject() {
    using Item = vynscripting::definition::ScriptItemDefinition<AudioFilterObject>;
    using Self = AudioFilterObject;
    constexpr unsigned kFlags = vynscripting::definition::ScriptItemFlags::kScriptable;
    auto& definition = *vynscripting::definition::ScriptObjectDefinitionBase::sCurrent;
    auto const property = [&](char const* name, char const* description, auto getter) {
        definition.AddProperty(Item::Property({name, description}, getter, kFlags));
    };
    auto const method = [&](char const* name, std::vector<char const*> arguments, char const* description,
                            auto function) {
        definition.AddProperty(Item::Method({name, description, std::move(arguments)}, function, kFlags));
    };

    definition.AddOrModifyNamespace("vynaudiofilterhost", 0);
    definition.AddOrModifyNamespace("AudioFilter",
                                    vynscripting::definition::ScriptObjectDefinitionBase::kNamespaceIsClass);
    property("displayName", "The display name of this audio filter.", &Self::GetDisplayName);
    property("ID", "The ID of the audio filter.", &Self::GetID);
    property("parameterCount", "Return the number of parameters.", &Self::GetParameterCount);
    method("getParameter", {"index"}, "Return the value of the parameter at <index>.", &Self::GetParameter);
    method("setParameter", {"index", "value"}, "Set the value of the parameter at <index>.", &Self::SetParameter);
    property("inputBuses", "The input buses of the audio filter.", &Self::GetInputBuses);
    property("outputBuses", "The output buses of the audio filter.", &Self::GetOutputBuses);
    method("requestBusConfiguration", {"inputs", "outputs"},
           "Requests the input/output bus configuration from the audio filter.", &Self::RequestBusConfiguration);
    method("getFilterChannelForTarget", {"isInput", "targetChannel"},
           "Returns the channel index for a target bus channel.", &Self::GetFilterChannelForTarget);
    method("assignChannelMapping", {"isInput", "filterChannel", "targetChannel"}, "Assignes a channel mapping.",
           &Self::AssignChannelMapping);
    method("removeChannelMapping", {"isInput", "filterChannel"}, "Removes the channel mapping for a filter channel.",
           &Self::RemoveChannelMapping);
}

void AudioFilterObject::Initialize(std::function<boost::intrusive_ptr<AudioFilter>()> const& provider) {
    if (mInitialized)
        return;
    mInitialized = true;
    mFilterProvider = provider;
}

bool AudioFilterObject::IsEqual(boost::intrusive_ptr<ScriptObject> const& other) const {
    if (!ScriptObject::IsEqual(other))
        return false;
    auto const* const object = dynamic_cast<AudioFilterObject const*>(other.get());
    return !object || GetAudioFilter(false) == object->GetAudioFilter(false);
}

boost::intrusive_ptr<AudioFilter> AudioFilterObject::GetAudioFilter(bool required) const {
    boost::intrusive_ptr<AudioFilter> filter;
    if (mFilterProvider)
        filter = mFilterProvider();
    if (!filter && required)
        throw vynscripting::ParameterErrorException();
    return filter;
}

AudioFilterObject::UString AudioFilterObject::GetDisplayName() {
    return GetAudioFilter(true)->GetDisplayName();
}

AudioFilterObject::UString AudioFilterObject::GetID() {
    return GetAudioFilter(true)->GetID();
}

int AudioFilterObject::GetParameterCount() const {
    return GetAudioFilter(true)->GetParameterCount();
}

float AudioFilterObject::GetParameter(int index) const {
    return GetAudioFilter(true)->GetParameter(index);
}

bool AudioFilterObject::SetParameter(int index, float value) {
    auto const filter = GetAudioFilter(true);
    // What is no number isn't above 0 either.
    if (value > 1.0f)
        value = 1.0f;
    else if (!(value > 0.0f))
        value = 0.0f;
    filter->SetParameter(index, value);
    return true;
}

AudioFilterObject::Objects AudioFilterObject::GetInputBuses() {
    return ConvertBuses(GetAudioFilter(true)->GetInputBuses());
}

AudioFilterObject::Objects AudioFilterObject::GetOutputBuses() {
    return ConvertBuses(GetAudioFilter(true)->GetOutputBuses());
}

bool AudioFilterObject::RequestBusConfiguration(Objects const& inputs, Objects const& outputs) const {
    auto const filter = GetAudioFilter(true);
    AudioFilter::Buses const inputBuses = ConvertBuses(inputs);
    AudioFilter::Buses const outputBuses = ConvertBuses(outputs);
    filter->RequestBusConfiguration(inputBuses, outputBuses);
    return true;
}

int AudioFilterObject::GetFilterChannelForTarget(bool isInput, int targetChannel) const {
    return GetAudioFilter(true)->GetEffectChannelIndexForTarget(targetChannel, DirectionOf(isInput));
}

bool AudioFilterObject::AssignChannelMapping(bool isInput, int filterChannel, int targetChannel) {
    GetAudioFilter(true)->AssignChannelMapping(DirectionOf(isInput), filterChannel, targetChannel);
    return true;
}

bool AudioFilterObject::RemoveChannelMapping(bool isInput, int filterChannel) {
    GetAudioFilter(true)->RemoveChannelMapping(DirectionOf(isInput), filterChannel);
    return true;
}

AudioFilterObject::Objects AudioFilterObject::ConvertBuses(AudioFilter::Buses const& buses) const {
    Objects objects;
    for (auto const& bus : buses) {
        auto const initialize = [&bus](ScriptObject& object) {
            dynamic_cast<AudioBusDescriptionObject&>(object).Initialize(bus);
        };
        objects.push_back(vynscripting::utils::CreateScriptObject(
            GetContextHdl(), AudioBusDescriptionObject::GetClassname(), initialize));
    }
    return objects;
}

AudioFilter::Buses AudioFilterObject::ConvertBuses(Objects const& objects) const {
    AudioFilter::Buses buses;
    for (auto const& object : objects) {
        auto const* const bus = dynamic_cast<AudioBusDescriptionObject const*>(object.get());
        if (!bus)
            throw vynscripting::ParameterErrorException();
        buses.push_back(bus->GetBusDescription());
    }
    return buses;
}

} // namespace vynaudiofilterhost
