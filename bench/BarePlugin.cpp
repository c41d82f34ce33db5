#include "BarePlugin.h"

#include "os/ModuleLoader.h"
#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"
#include "vyncore/strings/StringUtils.h"

#include "pluginterfaces/vst/ivstmessage.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "pluginterfaces/vst/ivstunits.h"

#include <cstring>
#include <stdexcept>

namespace vynbench {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

void Require(bool condition, char const* what) {
    if (!condition)
        throw std::runtime_error(what);
}

template <class Interface>
Interface* Make(IPluginFactory* factory, TUID const classID) {
    void* made = nullptr;
    Require(factory->createInstance(classID, Interface::iid, &made) == kResultOk && made, "createInstance");
    return static_cast<Interface*>(made);
}

template <class Interface>
Interface* Ask(FUnknown* object) {
    void* found = nullptr;
    return object->queryInterface(Interface::iid, &found) == kResultOk ? static_cast<Interface*>(found) : nullptr;
}

/// What a plug-in is initialised with.
class NoHost : public FUnknown {
public:
    tresult PLUGIN_API queryInterface(TUID const, void** object) override {
        *object = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

NoHost theHost;

} // namespace

BarePlugin::BarePlugin(std::string const& path) {
    LoadModule(path);
    MakeObjects();
    AskParameters();
    AskBuses();
    Activate();
}

void BarePlugin::LoadModule(std::string const& path) {
    std::string reason;
    mModule = os::OpenModule(vyncore::string::UTF8to16(path), reason);
    Require(mModule, reason.c_str());
    if (auto const entry = reinterpret_cast<bool (*)(void*)>(os::FindExport(mModule, "ModuleEntry")))
        Require(entry(mModule), "ModuleEntry");
    auto const getFactory = reinterpret_cast<IPluginFactory* (*)()>(os::FindExport(mModule, "GetPluginFactory"));
    Require(getFactory, "GetPluginFactory");
    mFactory = getFactory();
}

void BarePlugin::MakeObjects() {
    PFactoryInfo factoryInfo;
    mFactory->getFactoryInfo(&factoryInfo);
    PClassInfo info;
    for (int32 index = 0; index < mFactory->countClasses(); ++index) {
        mFactory->getClassInfo(index, &info);
        if (std::strcmp(info.category, kVstAudioEffectClass) == 0)
            break;
    }
    if (auto* const factory3 = Ask<IPluginFactory3>(mFactory)) {
        PClassInfoW wide;
        factory3->getClassInfoUnicode(0, &wide);
        factory3->release();
    }
    mComponent = Make<IComponent>(mFactory, info.cid);
    Require(mComponent->initialize(&theHost) == kResultOk, "initialize");
    mProcessor = Ask<IAudioProcessor>(mComponent);
    Require(mProcessor, "IAudioProcessor");
    mController = Ask<IEditController>(mComponent);
    if (!mController) {
        TUID controllerID;
        mComponent->getControllerClassId(controllerID);
        mController = Make<IEditController>(mFactory, controllerID);
    }
    mController->initialize(&theHost);
    vynaudiofilterhost::vst3::VST3MemoryStream state;
    if (mComponent->getState(&state) == kResultOk) {
        state.seek(0, IBStream::kIBSeekSet, nullptr);
        mController->setComponentState(&state);
    }
}

void BarePlugin::AskParameters() {
    for (int32 index = 0; index < mController->getParameterCount(); ++index) {
        ParameterInfo info{};
        mController->getParameterInfo(index, info);
    }
}

void BarePlugin::AskBuses() {
    for (int32 const direction : {kInput, kOutput}) {
        mComponent->getBusCount(kEvent, direction);
        for (int32 index = 0; index < mComponent->getBusCount(kAudio, direction); ++index) {
            BusInfo info{};
            mComponent->getBusInfo(kAudio, direction, index, info);
            SpeakerArrangement arrangement = 0;
            mProcessor->getBusArrangement(direction, index, arrangement);
            if (info.busType == kMain)
                mComponent->activateBus(kAudio, direction, index, true);
        }
    }
}

void BarePlugin::Activate() {
    ProcessSetup setup{kRealtime, kSample32, 512, 48000.0};
    mProcessor->getLatencySamples();
    mProcessor->setupProcessing(setup);
    mComponent->setActive(true);
    mProcessor->getLatencySamples();
    mProcessor->setProcessing(true);
}

void BarePlugin::SetBuffers(float** in, float** out, int numSamples) {
    mInput.numChannels = 2;
    mInput.channelBuffers32 = in;
    mOutput.numChannels = 2;
    mOutput.channelBuffers32 = out;
    mData.numSamples = numSamples;
    mData.numInputs = 1;
    mData.numOutputs = 1;
    mData.inputs = &mInput;
    mData.outputs = &mOutput;
    mData.inputParameterChanges = &mInputChanges;
    mData.outputParameterChanges = &mOutputChanges;
    mData.processContext = &mContext;
}

BarePlugin::~BarePlugin() {
    mProcessor->setProcessing(false);
    mComponent->setActive(false);
    mController->terminate();
    mController->release();
    mProcessor->release();
    mComponent->terminate();
    mComponent->release();
    mFactory->release();
    if (auto const exit = reinterpret_cast<bool (*)()>(os::FindExport(mModule, "ModuleExit")))
        exit();
    os::CloseModule(mModule);
}

} // namespace vynbench
