#include "vynmediatypes/scripting/AudioBusDescriptionObject.h"

#include "support/ScriptItems.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <gmock/gmock.h>

namespace {

using namespace vynmediatypes;
using namespace vyntest;
using scripting::AudioBusDescriptionObject;
using vyncore::UString;
using vynscripting::ScriptObject;
using vynscripting::ScriptObjectPtr;
using vynscripting::ScriptValue;

ScriptObjectPtr ObjectOf(AudioBusDescription const& bus) {
    return vynscripting::utils::CreateScriptObject(
        nullptr, AudioBusDescriptionObject::GetClassname(),
        [&](ScriptObject& object) { dynamic_cast<AudioBusDescriptionObject&>(object).Initialize(bus); });
}

TEST(AudioBusDescriptionObjectTest, ScriptsReadWhatTheBusIs) {
    auto const object = ObjectOf(AudioBusDescription::CreateStereo(u"Out", AudioBusDescription::kTypeMain));
    EXPECT_EQ(CallItem(object, "name"), ScriptValue(UString(u"Out")));
    EXPECT_EQ(CallItem(object, "type"), ScriptValue(UString(u"main")));
    EXPECT_EQ(CallItem(object, "layout"), ScriptValue(UString(u"Stereo")));
    EXPECT_EQ(CallItem(object, "channels"), ScriptValue(std::vector<UString>{u"L", u"R"}));
    EXPECT_EQ(CallItem(object, "channelCount"), ScriptValue(2));
    auto const key = ObjectOf(AudioBusDescription::CreateMono(u"Key", AudioBusDescription::kTypeSideChain));
    EXPECT_EQ(CallItem(key, "type"), ScriptValue(UString(u"sidechain")));
}

TEST(AudioBusDescriptionObjectTest, ObjectsOfEqualBusesAreEqual) {
    auto const bus = AudioBusDescription::CreateStereo(u"Out", AudioBusDescription::kTypeMain);
    auto const object = ObjectOf(bus);
    EXPECT_TRUE(object->IsEqual(ObjectOf(bus)));
    EXPECT_FALSE(object->IsEqual(ObjectOf(AudioBusDescription::CreateMono(u"Out", AudioBusDescription::kTypeMain))));
    EXPECT_FALSE(object->IsEqual(new ScriptObject("AudioBusDescription")));
    EXPECT_FALSE(object->IsEqual(nullptr));
}

} // namespace
