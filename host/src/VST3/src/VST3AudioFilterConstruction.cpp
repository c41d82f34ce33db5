#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"

#include "vynaudiofilterhost/VST3/src/PluginPointer.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassID.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassInfo.h"
#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"
#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"

#include "pluginterfaces/vst/ivstmessage.h"

#include <cstring>
#include <string>

namespace vynaudiofilterhost::vst3 {

using Steinberg::kResultOk;
using Steinberg::Vst::IConnectionPoint;
using Steinberg::Vst::IEditController;
using vyncore::debug::DebugTrace;
using vyncore::debug::TracePoint;

namespace {

constexpr int kProgress = 6;
constexpr Steinberg::uint32 kMaxDisplayNameLength = 4096;

TracePoint theTrace(kProgress, "VST3AudioFilter");
TracePoint theDestructorTrace(kProgress, "~VST3AudioFilter");

void TraceStep(char const* text) {
    DebugTrace(theDestructorTrace, [text] { return text; });
}

template <class Interface>
Interface* MakeInstance(Steinberg::IPluginFactory* factory, Steinberg::TUID const classID) {
    void* made = nullptr;
    if (factory->createInstance(classID, Interface::iid, &made) != kResultOk)
        return nullptr;
    return static_cast<Interface*>(made);
}

template <class Interface>
void ReleaseAndClear(Interface*& pointer) {
    if (Interface* const object = pointer) {
        pointer = nullptr;
        object->release();
    }
}

} // namespace

VST3AudioFilter::VST3AudioFilter(Steinberg::IPluginFactory* factory, Steinberg::PClassInfo const& classInfo)
    : AudioFilter(FormatVST3ClassID(classInfo.cid), UString()), mFactory(factory) {
    std::memcpy(mClassID, classInfo.cid, sizeof mClassID);
    std::memset(&mProcessContext, 0, sizeof mProcessContext);
    mFactory->addRef();
    try {
        Construct(classInfo);
    } catch (...) {
        ReleasePlugin();
        throw;
    }
}

VST3AudioFilter::~VST3AudioFilter() {
    TraceStep("entry");
    ReleasePlugin();
    TraceStep("exit");
}

void VST3AudioFilter::Construct(Steinberg::PClassInfo const& classInfo) {
    VST3ClassInfo const facts = ReadClassInfo(mClassID, *mFactory);
    UString displayName = facts.name;
    mSubCategories = facts.subCategories;
    mVendor = facts.vendor;
    mSDKVersionText = facts.sdkVersion;
    mInstrument = mSubCategories.find("Instrument") != std::string::npos;
    if (displayName.empty()) {
        DebugTrace(theTrace, [] { return "VST3AudioFilter: Display name empty, using class info"; });
        displayName = vyncore::string::UTF8to16(TextOf(classInfo.name));
    }
    DebugTrace(theTrace, [&] { return u"VST3AudioFilter: Display name = " + displayName; });
    mSDKVersion = ParseSDKVersion(mSDKVersionText);
    DebugTrace(theTrace, [this] {
        vyncore::oUTF16StringStream stream;
        stream << "VST3AudioFilter: sdkVersion = " << mSDKVersionText << " 0x";
        stream.SetHex(true);
        stream << mSDKVersion;
        return stream.str();
    });

    mCreated = CreatePluginObjects(displayName);
    if (!mCreated)
        throw "Could not create component";
    SetDisplayName(displayName);
    if (mController)
        JoinProcessorAndController();
    BuildParameterList();
    BuildIOConfiguration();
    mLatency = ReadLatency();
    mFactoryPresetCount = ReadFactoryPresetCount();
    mVendorController = mController ? Query<IVST3TolveVendorSpecificController>(mController) : nullptr;
    mVendorProcessor = Query<IVST3VirtualAudioFilterProcessor>(mProcessor);
    SetupProcessing();
}

bool VST3AudioFilter::CreatePluginObjects(UString& displayName) {
    if (!CreateComponent(displayName))
        return false;
    mProcessor = Query<Steinberg::Vst::IAudioProcessor>(mComponent);
    return mProcessor && CreateController();
}

bool VST3AudioFilter::CreateComponent(UString& displayName) {
    mComponent = MakeInstance<Steinberg::Vst::IComponent>(mFactory, mClassID);
    if (!mComponent)
        return false;
    mComponentInitialized = mComponent->initialize(static_cast<Steinberg::Vst::IComponentHandler*>(this)) == kResultOk;
    if (mComponentInitialized)
        ReadVendorDisplayName(displayName);
    return mComponentInitialized;
}

void VST3AudioFilter::ReadVendorDisplayName(UString& displayName) {
    PluginPointer const vendorComponent(Query<IVST3TolveVendorSpecificComponent>(mComponent));
    if (!vendorComponent)
        return;
    Steinberg::uint32 const length = vendorComponent->GetDisplayNameLength();
    if (length == 0 || length > kMaxDisplayNameLength)
        return;
    std::string text(length + 1, '\0');
    vendorComponent->GetDisplayName(text.data());
    text[length] = '\0';
    if (text.front() != '\0')
        displayName = vyncore::string::UTF8to16(text.c_str());
}

bool VST3AudioFilter::CreateController() {
    mController = Query<IEditController>(mComponent);
    bool const isComponentItself = mController != nullptr;
    if (!mController) {
        Steinberg::TUID controllerID{};
        if (mComponent->getControllerClassId(controllerID) == kResultOk)
            mController = MakeInstance<IEditController>(mFactory, controllerID);
    }
    if (!mController)
        return false;
    mControllerInitialized = mController->initialize(static_cast<Steinberg::Vst::IHostApplication*>(this)) == kResultOk;
    return mControllerInitialized || isComponentItself;
}

void VST3AudioFilter::JoinProcessorAndController() {
    mUnitInfo = Query<Steinberg::Vst::IUnitInfo>(mController);
    mMidiMapping = Query<Steinberg::Vst::IMidiMapping>(mController);
    mController->setComponentHandler(this);
    PluginPointer const processorPoint(Query<IConnectionPoint>(mProcessor));
    PluginPointer const controllerPoint(Query<IConnectionPoint>(mController));
    if (processorPoint && controllerPoint) {
        mConnected = true; // ahead of the calls: half a connection has to be taken down as well
        processorPoint->connect(controllerPoint.Get());
        controllerPoint->connect(processorPoint.Get());
    }
    SendComponentStateToController();
}

void VST3AudioFilter::SendComponentStateToController() {
    OwnedObject<VST3MemoryStream> const stream(new VST3MemoryStream);
    if (mComponent->getState(stream.get()) != kResultOk)
        return;
    mChunkSize = kStateChunkHeader + stream->GetSize();
    stream->seek(0, Steinberg::IBStream::kIBSeekSet, nullptr);
    mController->setComponentState(stream.get());
}

void VST3AudioFilter::Disconnect() {
    if (!mConnected)
        return;
    mConnected = false;
    PluginPointer const processorPoint(Query<IConnectionPoint>(mProcessor));
    PluginPointer const controllerPoint(Query<IConnectionPoint>(mController));
    if (!processorPoint || !controllerPoint)
        return;
    Guarded([&] { processorPoint->disconnect(controllerPoint.Get()); });
    Guarded([&] { controllerPoint->disconnect(processorPoint.Get()); });
}

void VST3AudioFilter::ReleasePlugin() {
    // From here on nobody listens to what the plug-in has to say.
    mParametersListed.store(false, std::memory_order_release);
    mParameters.ForgetInfos();
    if (mVendorController)
        TraceStep("releasing vendor specific controller");
    Guarded([this] { ReleaseAndClear(mVendorController); });
    if (mVendorProcessor)
        TraceStep("releasing vendor specific processor");
    Guarded([this] { ReleaseAndClear(mVendorProcessor); });
    DropEditor();
    mInputEvents.reset();
    mOutputEvents.reset();
    TraceStep("disconnecting processor/controller");
    Guarded([this] { Disconnect(); });
    mInputBusBuffers.Free();
    mOutputBusBuffers.Free();
    Guarded([this] { ReleaseAndClear(mMidiMapping); });
    Guarded([this] { ReleaseAndClear(mUnitInfo); });
    TraceStep("releasing controller");
    if (mController) {
        Guarded([this] { mController->setComponentHandler(nullptr); });
        if (mControllerInitialized)
            Guarded([this] { mController->terminate(); });
        Guarded([this] { ReleaseAndClear(mController); });
    }
    TraceStep("releasing audio processor");
    Guarded([this] { ReleaseAndClear(mProcessor); });
    TraceStep("releasing component");
    if (mComponent) {
        if (mComponentInitialized)
            Guarded([this] { mComponent->terminate(); });
        Guarded([this] { ReleaseAndClear(mComponent); });
    }
    // Until here the plug-in could take its handlers back; those that it has left are forgotten.
    mRunLoop->Close();
    TraceStep("releasing factory");
    Guarded([this] { ReleaseAndClear(mFactory); });
}

} // namespace vynaudiofilterhost::vst3
