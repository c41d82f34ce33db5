#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/VST3/src/HostRunLoop.h"
#include "vynaudiofilterhost/VST3/src/ParameterChanges.h"
#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilterEditor.h"
#include "vynaudiofilterhost/VST3/src/VST3BusBuffers.h"
#include "vynaudiofilterhost/VST3/src/VST3EventList.h"
#include "vynaudiofilterhost/VST3/src/VST3ParameterList.h"
#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"
#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivstcontextmenu.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivsthostapplication.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "pluginterfaces/vst/ivstunits.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The filter over one class of a VST3 module: component, processor and edit controller, made, joined, activated and
/// torn down in a fixed order, with the filter itself as their host.
///
/// Made by VST3PluginModule. It holds a reference on each of the plug-in's objects and on the factory; the module's
/// code stays with the module cache. What a plug-in holds of the filter counts nothing: addRef and release always
/// return 1.
///
/// Threads: Process, SetCurrentOffset and ScheduleMIDIEvent belong to the process thread, SetParameter to whoever has a
/// message run there, else to the main thread. A plug-in may call performEdit on any thread; restartComponent is
/// honoured on the main thread alone. Everything else belongs to the main thread.
///
/// Invariants:
/// 1. A constructed filter has a component, a processor and a controller.
/// 2. The shown parameters, the rings and the lists of changes are fixed by construction.
/// 3. The plug-in is never handed fewer channel pointers than it says it has.
class VST3AudioFilter final : public AudioFilter,
                              public Steinberg::Vst::IHostApplication,
                              public Steinberg::Vst::IComponentHandler,
                              public Steinberg::Vst::IComponentHandler2,
                              public Steinberg::Vst::IComponentHandler3,
                              public Steinberg::Vst::IUnitHandler,
                              public Steinberg::Vst::IContextMenuTarget,
                              public IVST3TolveVendorSpecificHost,
                              public IVirtualAudioFilterSupport,
                              public IPresetExchange {
public:
    /// Makes and joins the plug-in's objects. Throws a character string when they can't be made, and whatever the
    /// plug-in throws; no object of it is left behind then. [main-thread]
    VST3AudioFilter(Steinberg::IPluginFactory* factory, Steinberg::PClassInfo const& classInfo);
    ~VST3AudioFilter() override;

    // AudioFilter.
    void SetSampleRate(float sampleRate) override;
    void SetBlockSize(int blockSize) override;
    int GetMaxProcessingBlockSize() const override;
    void SetCurrentOffset(std::int64_t offset) override;
    void Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags) override;
    int GetTail() const override;
    void Suspend() override;
    void Resume() override;
    int GetParameterCount() const override;
    void SetParameter(int index, float value) override;
    float GetParameter(int index) const override;
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override;
    UString GetParameterString(int index) override;
    bool DoPresetsUseChunkData() const override;
    int GetNumFactoryPresets() const override;
    UString GetFactoryPresetName(int index) override;
    void SetFactoryPreset(int index) override;
    bool LoadChunkData(PresetData const& preset) override;
    bool SaveChunkData(PresetData& preset) const override;
    int GetInitialDelay() const override;
    boost::intrusive_ptr<AudioFilterDescriptor> CreateFilterDescriptor(PluginLocator const& locator,
                                                                       bool internalFilter) override;
    bool HasCustomEditor() const override;
    boost::intrusive_ptr<AudioFilterEditor> CreateCustomEditor() override;
    void DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor> editor) override;
    void FlushMessageQueue() override;
    bool RequiresSymmetricIO() const override;
    bool IsMusicDevice() const override;
    void ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                           unsigned char data2) override;

    // Every interface of the host. [any-thread]
    Steinberg::tresult PLUGIN_API queryInterface(Steinberg::TUID const iid, void** object) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

    // IHostApplication. [any-thread]
    Steinberg::tresult PLUGIN_API getName(Steinberg::Vst::String128 name) override;
    Steinberg::tresult PLUGIN_API createInstance(Steinberg::TUID cid, Steinberg::TUID iid, void** object) override;

    // IComponentHandler. [any-thread], restartComponent [main-thread]
    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID id, Steinberg::Vst::ParamValue value) override;
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32 flags) override;

    // IComponentHandler2. [any-thread]
    Steinberg::tresult PLUGIN_API setDirty(Steinberg::TBool state) override;
    Steinberg::tresult PLUGIN_API requestOpenEditor(Steinberg::FIDString name) override;
    Steinberg::tresult PLUGIN_API startGroupEdit() override;
    Steinberg::tresult PLUGIN_API finishGroupEdit() override;

    // IComponentHandler3 and IContextMenuTarget: the host offers no context menu. [any-thread]
    Steinberg::Vst::IContextMenu* PLUGIN_API createContextMenu(Steinberg::IPlugView* view,
                                                               Steinberg::Vst::ParamID const* id) override;
    Steinberg::tresult PLUGIN_API executeMenuItem(Steinberg::int32 tag) override;

    // IUnitHandler. [any-thread]
    Steinberg::tresult PLUGIN_API notifyUnitSelection(Steinberg::Vst::UnitID unit) override;
    Steinberg::tresult PLUGIN_API notifyProgramListChange(Steinberg::Vst::ProgramListID list,
                                                          Steinberg::int32 program) override;

    // IVST3TolveVendorSpecificHost. [any-thread]
    int PLUGIN_API GetLanguageCode() override;
    int PLUGIN_API ReservedQuery() override;
    void PLUGIN_API ReservedCommand() override;
    void PLUGIN_API OnAdvanceFocus(int direction) override;
    char const* PLUGIN_API GetLocale() override;

    // IVirtualAudioFilterSupport. [main-thread]
    bool IsVirtualAudioFilterSupported() const override;
    bool BeginVirtualPass(std::int64_t firstSample, std::int64_t sampleCount) override;
    bool EndVirtualPass() override;
    bool GetInputRange(std::int64_t firstOutput, std::int64_t outputCount, std::int64_t& firstInput,
                       std::int64_t& inputCount) const override;
    bool InvalidateInputRange(std::int64_t firstSample, std::int64_t sampleCount) override;
    int GetVirtualLatency() const override;
    bool IsOutputRangeReady(std::int64_t firstSample, std::int64_t sampleCount) const override;

    // IPresetExchange. [main-thread]
    std::vector<UString> GetPresetFileExtensions() const override;
    bool IsPresetFile(std::span<unsigned char const> bytes) const override;
    bool ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset, UString& reason) const override;
    bool WritePresetFile(PresetData const& preset, UString const& extension, Bytes& bytes,
                         UString& reason) const override;
    bool IsStateWhole(PresetData const& preset) const override;
    bool WasStateTaken() const override { return mChunkTaken; }
    bool CanSelectFactoryPreset(int index) const override;

protected:
    boost::intrusive_ptr<AudioFilter> Clone() const override;
    void RequestIOConfiguration(Layouts const& inputLayouts, Layouts const& outputLayouts) override;
    void OnUITimerTick() override;

private:
    static constexpr std::int32_t kMaxProcessBlock = 1024; ///< samples that the plug-in is given at once
    static constexpr std::int32_t kEventListSize = 2048;
    static constexpr Steinberg::Vst::ParamID kNoProgramChange = 0xFFFFFFFF;

    // Life: VST3AudioFilterConstruction.cpp.
    void Construct(Steinberg::PClassInfo const& classInfo);
    bool CreatePluginObjects(UString& displayName);
    bool CreateComponent(UString& displayName);
    bool CreateController();
    void ReadVendorDisplayName(UString& displayName);
    void JoinProcessorAndController();
    void SendComponentStateToController();
    void Disconnect();
    void ReleasePlugin();
    void DropEditor();

    // Life: VST3AudioFilter.cpp.
    void SetupProcessing();
    void Deactivate();
    void ActivateBuses(Steinberg::Vst::BusDirection direction, Steinberg::Vst::BusType type);
    std::int32_t ReadLatency() const;

    // Buses.
    void BuildIOConfiguration();
    void ReadBuses(Steinberg::Vst::BusDirection direction, Buses& buses, VST3BusBuffers& buffers) const;
    std::int32_t CountBuses(Steinberg::Vst::MediaType type, Steinberg::Vst::BusDirection direction) const;

    // Processing.
    Steinberg::Vst::ProcessData MakeProcessData();
    void UpdateTransport();
    void ProcessSlice(float* const* in, float* const* out, std::int32_t offset, std::int32_t numSamples);
    void FlushParametersToProcessor();
    void SendPendingValues();
    void TraceProcessError(Steinberg::tresult result);
    void ClearEvents();
    bool ScheduleMappedController(unsigned char kind, std::int16_t channel, unsigned char data1, unsigned char data2);

    // State and programs.
    using StateBytes = std::span<unsigned char const>;
    void SetChunk(PresetData& preset, StateBytes chunk) const;
    bool SetComponentState(ChunkBytes chunk);
    bool SetControllerState(ChunkBytes state);
    std::int32_t ReadFactoryPresetCount() const;
    std::int32_t ReadProgramSteps() const;
    bool FindRootUnit(Steinberg::Vst::UnitInfo& unit) const;

    // Parameters.
    void BuildParameterList();
    void ListParameter(std::int32_t index, Steinberg::Vst::ParameterInfo const& info);
    std::int32_t FindParameterIndex(Steinberg::Vst::ParamID id) const;
    void SendEditToController(Steinberg::Vst::ParamID id, Steinberg::Vst::ParamValue value);

    // Constant after construction. Each pointer holds one reference.
    Steinberg::TUID mClassID;
    Steinberg::Vst::IComponent* mComponent = nullptr;
    Steinberg::Vst::IAudioProcessor* mProcessor = nullptr;
    Steinberg::Vst::IEditController* mController = nullptr;
    Steinberg::Vst::IMidiMapping* mMidiMapping = nullptr;
    IVST3TolveVendorSpecificController* mVendorController = nullptr;
    IVST3VirtualAudioFilterProcessor* mVendorProcessor = nullptr;
    Steinberg::Vst::IUnitInfo* mUnitInfo = nullptr;
    UString mSDKVersionText;
    std::uint32_t mSDKVersion = 0;
    Steinberg::IPluginFactory* mFactory;
    bool mCreated = false;
    bool mConnected = false;
    bool mComponentInitialized = false;
    bool mControllerInitialized = false;
    UString mVendor;
    std::string mSubCategories;
    std::int32_t mFactoryPresetCount = 0;
    Steinberg::Vst::ParamID mProgramChangeParameterID = kNoProgramChange;
    std::int32_t mProgramChangeParameterIndex = 0;
    VST3ParameterList mParameters;
    bool mInstrument = false;

    // Main thread.
    std::shared_ptr<HostRunLoop> const mRunLoop = HostRunLoop::Make();
    boost::intrusive_ptr<VST3AudioFilterEditor> mEditor;
    bool mChunkTaken = true;            ///< what the plug-in said of the last chunk
    mutable std::size_t mChunkSize = 0; ///< of the last one that it gave

    // Process thread while the filter runs, main thread while it is suspended.
    Steinberg::Vst::ProcessContext mProcessContext;
    bool mProcessing = false;
    bool mProcessErrorTraced = false;
    VST3BusBuffers mInputBusBuffers;
    VST3BusBuffers mOutputBusBuffers;
    OwnedObject<VST3EventList> mInputEvents;
    OwnedObject<VST3EventList> mOutputEvents;
    ParameterChanges mInputChanges{ParameterChanges::Life::kEmbedded};
    ParameterChanges mOutputChanges{ParameterChanges::Life::kEmbedded};

    // Between the threads.
    static constexpr std::int32_t kLatencyUnread = -1;
    mutable std::atomic<std::int32_t> mLatency{0}; ///< while the filter runs; kLatencyUnread until it is asked for
    std::atomic<bool> mParametersListed{false};    ///< what a plug-in edits before that is not heard
    ParameterPointQueues mInputPoints;
    ParameterPointQueues mOutputPoints;
};

} // namespace vynaudiofilterhost::vst3
