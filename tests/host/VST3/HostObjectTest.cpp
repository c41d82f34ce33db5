#include "vynaudiofilterhost/VST3/src/HostMessage.h"
#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"
#include "vynaudiofilterhost/VST3/src/VST3EventList.h"
#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"

#include "pluginterfaces/vst/ivsthostapplication.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

using namespace vynaudiofilterhost::vst3;

namespace {

template <class Object, class InterfaceType>
struct Case {
    using Interface = InterfaceType;
    static constexpr bool kOwned = !std::is_base_of_v<Steinberg::Vst::IMessage, Object> &&
                                   !std::is_base_of_v<Steinberg::Vst::IAttributeList, Object> &&
                                   !std::is_base_of_v<Steinberg::Vst::IParameterChanges, Object>;
    static void End(Interface* object) { static_cast<Object*>(object)->Disown(); }
    static Interface* Make() {
        if constexpr (std::is_default_constructible_v<Object>)
            return new Object;
        else
            return new Object(1);
    }
};

template <class TestCase>
class HostObjectTest : public ::testing::Test {};

using Cases =
    ::testing::Types<Case<HostMessage, Steinberg::Vst::IMessage>,
                     Case<HostAttributeList, Steinberg::Vst::IAttributeList>,
                     Case<ParameterChanges, Steinberg::Vst::IParameterChanges>,
                     Case<ParameterValueQueue, Steinberg::Vst::IParamValueQueue>,
                     Case<VST3EventList, Steinberg::Vst::IEventList>, Case<VST3MemoryStream, Steinberg::IBStream>>;
TYPED_TEST_SUITE(HostObjectTest, Cases);

} // namespace

TYPED_TEST(HostObjectTest, AnswersForItsInterfaceAloneAndCountsReferencesFromOne) {
    using Interface = typename TypeParam::Interface;
    Interface* const object = TypeParam::Make();
    void* answer = nullptr;
    EXPECT_EQ(object->queryInterface(Steinberg::FUnknown::iid, &answer), Steinberg::kResultOk);
    EXPECT_EQ(answer, object);

    // Plug-ins build identifiers where they like; this one is at an odd address.
    char room[sizeof(Steinberg::TUID) + 1];
    std::memcpy(room + 1, Interface::iid.toTUID(), sizeof(Steinberg::TUID));
    answer = nullptr;
    EXPECT_EQ(object->queryInterface(room + 1, &answer), Steinberg::kResultOk);
    EXPECT_EQ(answer, object);

    EXPECT_EQ(object->queryInterface(Steinberg::Vst::IHostApplication::iid, &answer), Steinberg::kNoInterface);
    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(object->queryInterface(nullptr, &answer), Steinberg::kNoInterface);
    EXPECT_EQ(object->queryInterface(Interface::iid, nullptr), Steinberg::kInvalidArgument);

    EXPECT_EQ(object->addRef(), 4u) << "two answers, each with a reference";
    for (Steinberg::uint32 left : {3u, 2u, 1u, 0u})
        EXPECT_EQ(object->release(), left);
    if (TypeParam::kOwned)
        TypeParam::End(object);
}

// A plug-in that gives back what it never took ends nothing that the host uses; one that keeps a reference may.
TEST(HostObjectTest, OwnedObjectsEndWhenNobodyHoldsThem) {
    ParameterChanges changes;
    changes.SetMaxParameters(1);
    Steinberg::int32 index = 0;
    auto* const queue = changes.addParameterData(5, index);
    queue->release();
    queue->release();
    for (Steinberg::int32 offset = 0; offset < 200; ++offset)
        queue->addPoint(offset, 0.5, index);
    EXPECT_EQ(queue->getPointCount(), 200);

    VST3MemoryStream* held = nullptr;
    {
        OwnedObject<VST3MemoryStream> const stream(new VST3MemoryStream);
        stream->addRef();
        held = stream.get();
    }
    EXPECT_EQ(held->GetSize(), 0u);
    EXPECT_EQ(held->release(), 0u);
}
