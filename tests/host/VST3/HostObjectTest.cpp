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
}
