#include "plugins/FixtureController.h"
#include "plugins/FixtureInstance.h"
#include "plugins/FixtureProcessor.h"

namespace vynfixtures {
namespace {

FixtureConfiguration const& Configuration() {
    return ModuleState::Get().configuration;
}

int CountOtherClasses() {
    int const withoutController = kModuleTraits.singleObject ? 1 : 0;
    return std::max(0, Configuration().otherClassCount - withoutController);
}

std::pair<ClassKind, int> ClassAt(int32 index) {
    int const others = CountOtherClasses();
    if (index == 0 || index > others)
        return {kAudioClass, std::max(0, index - others)};
    return {index == 1 && !kModuleTraits.singleObject ? kControllerClass : kOtherClass, index - 1};
}

bool IsClass(void const* classID, ClassKind kind, int count) {
    TUID own;
    for (int index = 0; index < count; ++index)
        if (CopyClassID(kind, index, own); SameID(own, classID))
            return true;
    return false;
}

template <class Char, std::size_t N>
void FillField(Char (&field)[N], std::string_view text) {
    std::basic_string<Char> const wide(text.begin(), text.end());
    FillText<Char>(field, wide, Configuration().Fails(FixtureFault::UnterminatedClassTexts));
}

template <class Info>
tresult FillInfo(char const* call, int32 index, Info& info) {
    static char const* const categories[] = {kVstAudioEffectClass, kVstComponentControllerClass, "Fixture Class"};
    Record(FixtureObject::Factory, call, {index});
    bool const exists = index >= 0 && index < kModuleTraits.audioClasses + CountOtherClasses();
    if (!exists || Configuration().Fails(FixtureFault::ClassInfoFails))
        return kInvalidArgument;
    auto const [kind, number] = ClassAt(index);
    CopyClassID(kind, number, info.cid);
    info.cardinality = PClassInfo::kManyInstances;
    SetFixtureText<char>(info.category, categories[kind]);
    FillField(info.name, std::string("Fixture") + (number == 0 ? "" : ' ' + std::to_string(number)));
    if constexpr (!std::is_same_v<Info, PClassInfo>) {
        FillField(info.subCategories, Configuration().subCategories);
        FillField(info.vendor, Configuration().vendor);
        FillField(info.version, "1.0.0");
        FillField(info.sdkVersion, Configuration().sdkVersion);
    }
    return kResultOk;
}

FUnknown* MakeInstance(bool component) {
    if (!component)
        return static_cast<IEditController*>(new FixtureInstance<FixtureController>);
    if (kModuleTraits.singleObject)
        return static_cast<IComponent*>(new FixtureInstance<FixtureProcessor, FixtureController>);
    return static_cast<IComponent*>(new FixtureInstance<FixtureProcessor>);
}

/// The list of classes begins with an audio class, goes on with those of other categories (the controller first) and
/// ends with the rest of the audio classes.
class FixtureFactory final : public IPluginFactory3 {
public:
    tresult PLUGIN_API queryInterface(TUID const id, void** object) override {
        int const level = Configuration().factoryLevel;
        bool const known = SameID(id, FUnknown_iid) || SameID(id, IPluginFactory_iid) ||
                           (level >= 2 && SameID(id, IPluginFactory2_iid)) ||
                           (level >= 3 && SameID(id, IPluginFactory3_iid));
        *object = known ? this : nullptr;
        if (!known)
            return kNoInterface;
        addRef();
        return kResultOk;
    }

    uint32 PLUGIN_API addRef() override { return static_cast<uint32>(++mReferences); }
    uint32 PLUGIN_API release() override { return static_cast<uint32>(--mReferences); }

    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override {
        Record(FixtureObject::Factory, "getFactoryInfo");
        FillField(info->vendor, "Fixture Factory");
        return Configuration().Fails(FixtureFault::FactoryInfoFails) ? kInternalError : kResultOk;
    }

    int32 PLUGIN_API countClasses() override {
        Record(FixtureObject::Factory, "countClasses");
        int const count = kModuleTraits.audioClasses + CountOtherClasses();
        return Configuration().Fails(FixtureFault::NegativeClassCount) ? -count : count;
    }

    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override {
        return FillInfo("getClassInfo", index, *info);
    }

    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override {
        return FillInfo("getClassInfo2", index, *info);
    }

    tresult PLUGIN_API getClassInfoUnicode(int32 index, PClassInfoW* info) override {
        return FillInfo("getClassInfoUnicode", index, *info);
    }

    tresult PLUGIN_API createInstance(FIDString classID, FIDString interfaceID, void** object) override;

    tresult PLUGIN_API setHostContext(FUnknown* context) override {
        Record(FixtureObject::Factory, "setHostContext", {context != nullptr});
        return kResultOk;
    }

    int GetReferences() const { return mReferences; }

private:
    std::atomic<int> mReferences{0};
};

tresult FixtureFactory::createInstance(FIDString classID, FIDString interfaceID, void** object) {
    using enum FixtureFault;
    bool const controller = IsClass(classID, kControllerClass, kModuleTraits.singleObject ? 0 : 1);
    bool const component = IsClass(classID, kAudioClass, kModuleTraits.audioClasses);
    bool const fails = Configuration().Fails(controller ? ControllerCreationFails : ComponentCreationFails);
    bool const null = Configuration().Fails(controller ? ControllerCreationNull : ComponentCreationNull);

    *object = nullptr;
    tresult result = (component || controller) && !fails ? kResultOk : kNoInterface;
    if (result == kResultOk && !null)
        result = owned(MakeInstance(component))->queryInterface(reinterpret_cast<int8 const*>(interfaceID), object);
    Record(FixtureObject::Factory, "createInstance",
           {.argument = result, .detail = controller ? "IEditController" : "IComponent"});
    return result;
}

FixtureFactory& TheFactory() {
    static FixtureFactory factory;
    return factory;
}

} // namespace

IPluginFactory* GetFactory() {
    return &TheFactory();
}

int GetFactoryReferences() {
    return TheFactory().GetReferences();
}

char const* InterfaceName(TUID const id) {
    static std::pair<int8 const*, char const*> const names[] = {
        {IComponent_iid, "IComponent"},
        {IAudioProcessor_iid, "IAudioProcessor"},
        {IEditController_iid, "IEditController"},
        {IUnitInfo_iid, "IUnitInfo"},
        {IMidiMapping_iid, "IMidiMapping"},
        {IConnectionPoint_iid, "IConnectionPoint"},
        {kVendorComponentID, "872EE790-61B2-43A2-8DBA-33C1D9262D3E"},
        {kVendorControllerID, "3C8A2F25-1411-4BF7-851B-13CB9C55AC92"},
        {kVendorProcessorID, "F83AD871-25F9-4500-903A-25AA46A3848C"},
    };
    auto const found = std::find_if(std::begin(names), std::end(names), [id](auto& n) { return SameID(n.first, id); });
    return found != std::end(names) ? found->second : nullptr;
}

void CopyClassID(ClassKind kind, int index, TUID to) {
    TUID const id = INLINE_UID(0x56594E46, 0x69787475, 0x72650000U | kModuleTraits.number,
                               kind << 8 | static_cast<unsigned>(index));
    std::copy_n(id, sizeof(TUID), to);
}

} // namespace vynfixtures
