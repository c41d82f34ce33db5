#pragma once

#include "vynaudiofilterhost/AudioFilterNotes.h"
#include "vynaudiofilterhost/AudioFilterParameterInfo.h"
#include "vynaudiofilterhost/AudioFilterSignals.h"
#include "vynaudiofilterhost/ChannelRouter.h"
#include "vynaudiofilterhost/IAudioFilterHost.h"
#include "vynaudiofilterhost/ProcessMessageHandler.h"
#include "vynaudiofilterhost/RenderingContext.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"
#include "vynmediatypes/AudioBusDescription.h"
#include "vynmediatypes/AudioChannelLayout.h"
#include "vynmediatypes/ChannelMap.h"

#include <boost/signals2/connection.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <atomic>
#include <cstdint>
#include <exception>
#include <list>
#include <mutex>
#include <vector>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

class AudioFilterDescriptor;
class AudioFilterEditor;
class PluginLocator;
class PresetData;
class PresetList;

/// The one class that an application sees for every hosted effect, whatever its format.
///
/// A subclass overrides what its format needs; nearly every operation has a working default. It is held through
/// boost::intrusive_ptr. A plug-in filter is made by its module; an internal one by its subclass's constructor.
///
/// Life: a new filter is suspended, without buses, with sample rate 0 and block size 0. Suspended, the application sets
/// host, rate and block size and asks for buses; Resume sizes everything that rendering uses, Suspend ends rendering.
/// Rendering starts after Resume and stops before Suspend. A filter may go to and fro any number of times.
///
/// Thread safety: ProcessWithMapping and the process side of posted messages belong to the process thread, gestures on
/// parameters to whoever makes them, everything else to the main thread. No operation on the process thread allocates,
/// locks or waits. Signals fire on the caller's thread; the latency signal on the main thread only.
class VYN_API AudioFilter : public vyncore::utility::RefCountedObject,
                            public AudioFilterSignals,
                            public AudioFilterNotes {
public:
    using UString = vyncore::UString;
    using Buses = std::vector<vynmediatypes::AudioBusDescription>;
    using Layouts = std::vector<vynmediatypes::AudioChannelLayout>;

    /// @param uniqueID     key of the filter in the catalogue, fixed for life
    /// @param displayName  what a user sees
    AudioFilter(UString const& uniqueID, UString const& displayName);
    AudioFilter(AudioFilter const&) = delete;
    AudioFilter& operator=(AudioFilter const&) = delete;
    ~AudioFilter() override;

    /// Stores where the filter asks for transport; not owned, null for none.
    /// [main-thread & suspended]
    virtual void SetAudioFilterHost(IAudioFilterHost* host);
    /// Stores the sample rate in hertz; rendering follows with the next Resume.
    /// [main-thread & suspended]
    virtual void SetSampleRate(float sampleRate);
    /// Stores the largest block in samples; the buffers for rendering follow with the next Resume.
    /// [main-thread & suspended]
    virtual void SetBlockSize(int blockSize);
    /// The largest number of samples that the effect itself is given at once.
    /// [any-thread]
    virtual int GetMaxProcessingBlockSize() const;
    /// Tells the position of the next block, in samples.
    /// [process-thread | main-thread & suspended]
    virtual void SetCurrentOffset(std::int64_t offset);

    /// The filter's own work on one block, called by ProcessWithMapping.
    /// @param in          in[channel][sample], one pointer per input channel of all buses in order; read only
    /// @param out         out[channel][sample], one pointer per output channel of all buses in order
    /// @param numSamples  samples in each buffer, at most the block size
    /// @param inFlags     channels whose input is silence
    /// @param outFlags    receives the channels whose output need not be read; a filter that produces nothing sets all
    /// [process-thread]
    virtual void Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags);

    /// The entry point of the render thread: runs waiting messages, keeps the filter from reading channels that the
    /// caller declares silent, and calls Process. Arguments as for Process.
    ///
    /// With the channel map in use, the channels of `in` and `out` and the flags are the target's: main channels first,
    /// in `in` the side-chain channels behind them. The buffers of channels that go around the filter get their input,
    /// as late as the filter is; those of channels that the filter takes and gives nothing back for are left alone, and
    /// their flag is set. While a filter runs, a target that grows hands its buffers over before a map leads there, and
    /// one that shrinks keeps them until the change has been made. A channel's input and output may be one buffer;
    /// those of different channels lie apart.
    /// [process-thread]
    virtual void ProcessWithMapping(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                    ChannelFlags& outFlags);

    /// What kind of effect it is; all false by default.
    /// [any-thread]
    virtual bool IsOfflineProcess() const;
    virtual bool IsGenerator() const;
    virtual bool CanChangeDuration() const;

    /// Selection and duration in samples, for effects that work on a stretch of audio.
    /// [main-thread]
    virtual void SetSelectionLeft(double position);
    virtual double GetSelectionLeft() const;
    virtual void SetCurrentDuration(double duration);
    virtual double GetCurrentDuration() const;
    virtual double GetProcessedDuration() const;
    /// Translate a position between the original and the processed audio; the same by default.
    /// [main-thread]
    virtual double GetOriginalPosition(double processedPosition) const;
    virtual double GetProcessedPosition(double originalPosition) const;
    virtual double GetProcessedScale() const;
    /// Processes off line, returns the samples made; 0 by default.
    /// [main-thread]
    virtual int OfflineProcess(float** in, float** out, int numInSamples, int numOutSamples, int numChannels);
    /// Samples of sound after the input has ended.
    /// [main-thread]
    virtual int GetTail() const;
    virtual int GetMaxOutputBlockSize(int inputBlockSize) const;
    virtual bool OfflineProcessFinished();

    /// Ends rendering: the main thread takes over the message queue, and the suspended-state signal fires with true.
    /// Another thread may do so, and resume, while the main thread runs neither this filter nor its call queue; the
    /// filter's tick is left alone then.
    /// [main-thread]
    virtual void Suspend();
    /// Sizes everything that rendering uses and lets the process thread in; the signal fires with false.
    /// [main-thread & suspended]
    virtual void Resume();

    virtual void SetRenderingContext(RenderingContext context);
    virtual void SetDoSpectral(bool spectral);
    virtual void SetPreviewMode(bool preview);

    /// Parameters are numbered from 0; values are normalized, 0..1.
    /// [main-thread]
    virtual int GetParameterCount() const;
    /// SetParameter, announced by the automated-parameter-change signal.
    /// [main-thread]
    virtual void SetParameterAutomated(int index, float value);
    /// Applies a value; the base class counts the change.
    /// [main-thread | process-thread]
    virtual void SetParameter(int index, float value);
    virtual float GetParameter(int index) const;
    /// Null when there is none.
    /// [main-thread]
    virtual boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index);
    virtual UString GetParameterString(int index);
    virtual void SetParameterIsAutomated(int index, bool automated);
    virtual std::uint64_t GetCustomData(int kind, std::uint64_t count, std::vector<float>& data);
    virtual std::uint64_t GetCustomData(int kind, std::uint64_t count, std::vector<double>& data);

    /// Settings are stored as a parameter list, or as a chunk when the filter says so. A filter loads settings of its
    /// present version alone.
    /// [main-thread]
    virtual float GetCurrentPresetVersion() const;
    virtual bool DoPresetsUseChunkData() const;
    /// The presets that the filter brings along. The list is replaced by one entry for each of them that has a name; an
    /// index out of range has no name, and selecting it does nothing.
    /// [main-thread]
    virtual void GetFactoryDefaultPresets(PresetList& list) const;
    virtual int GetNumFactoryPresets() const;
    virtual UString GetFactoryPresetName(int index);
    virtual void SetFactoryPreset(int index);
    /// Takes settings in. False when the preset is of another version or in a form that this filter doesn't take:
    /// nothing is changed then. What becomes of a chunk is the plug-in's affair and doesn't count. The preset-changed
    /// signal fires and the dirty count moves in any case, also when the plug-in throws, which goes on to the caller.
    /// Whoever calls holds the filter until this returns.
    /// [main-thread]
    virtual bool LoadSettings(PresetData const& preset);
    /// Replaces what the preset held by the filter's settings. What the plug-in throws goes on; the preset is as it was
    /// then.
    /// [main-thread]
    virtual void SaveSettings(PresetData& preset) const;
    /// The filter's own part in both, for chunks and for custom data. The base class has none: it gives false.
    /// [main-thread]
    virtual bool LoadChunkData(PresetData const& preset);
    virtual bool SaveChunkData(PresetData& preset) const;
    virtual bool LoadCustomData(PresetData const& preset);
    virtual bool ArePresetsSafeForPlayback() const;

    /// The filter's latency in samples. While the filter is suspended the effect itself is asked.
    /// [any-thread | main-thread & suspended]
    virtual int GetInitialDelay() const;

    /// Asks for buses; what the filter then has is its nearest answer (GetBusConfiguration). A request that leaves the
    /// filter without any channel is undone. Fires the bus-configuration signal when a bus differs from before. Channel
    /// maps stay as they are; rendering follows with the next Resume. What a plug-in throws goes to the caller; the
    /// filter may be without buses then.
    /// [main-thread & suspended]
    virtual void RequestBusConfiguration(Buses const& inputs, Buses const& outputs);
    /// True when the filter has more than one input bus.
    /// [main-thread]
    virtual bool CanUseSideChaining() const;

    /// Editors: null when the filter has none.
    /// [main-thread]
    virtual bool HasCustomEditor() const;
    virtual boost::intrusive_ptr<AudioFilterEditor> CreateCustomEditor();
    virtual void DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor> editor);

protected:
    /// What the public Clone returns.
    /// [main-thread]
    virtual boost::intrusive_ptr<AudioFilter> Clone() const;

public:
    virtual bool IsProxy() const;

    /// Bracket a user's gesture on a parameter. The editing signal fires when that changes something. A negative index
    /// concerns no single parameter: it fires always, and nothing is kept. They lock, and may allocate.
    /// [any-thread]
    virtual void BeginEditing(int index);
    virtual void EndEditing(int index);
    virtual bool IsEditing(int index) const;

    /// Bracket a load of settings; the end fires the preset-changed signal. The base class makes nothing of `changed`.
    /// [main-thread]
    virtual void StartLoadingSettings();
    virtual void FinishLoadingSettings(bool changed);

    /// The catalogue record of this filter, or null.
    /// [main-thread]
    virtual boost::intrusive_ptr<AudioFilterDescriptor> CreateFilterDescriptor(PluginLocator const& locator,
                                                                               bool internalFilter);

    /// Pumps the side of the message queue that the calling thread belongs to.
    /// [main-thread | process-thread]
    virtual void FlushMessageQueue();

    virtual bool RequiresSymmetricIO() const;
    virtual bool IsMusicDevice() const;

    /// Adds a MIDI message to the block that is processed next.
    /// @param live          played now, not sequenced
    /// @param sampleOffset  place in the block, in samples
    /// [process-thread]
    virtual void ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                                   unsigned char data2);

protected:
    /// Clears the buses and adds those that the filter can do, as near to the layouts as it can.
    /// [main-thread & suspended]
    virtual void RequestIOConfiguration(Layouts const& inputLayouts, Layouts const& outputLayouts);

    /// Sets every parameter, and announces each; false, with nothing set, when the preset holds another number of them.
    /// [main-thread]
    virtual bool LoadParams(PresetData const& preset);
    /// Replaces the list by one value per parameter; 0.0 for one that is not persisted.
    /// [main-thread]
    virtual void SaveParams(std::list<float>& values) const;
    /// Selects the preset's factory preset: the one of its index when that has its name, else the last of its name.
    /// False when there is none.
    /// [main-thread]
    virtual bool LoadFactoryPreset(PresetData const& preset);
    /// Whether settings of that version, or with that many parameters, are the filter's.
    /// [main-thread]
    virtual bool ValidatePresetVersion(float version) const;
    virtual bool ValidateParamCount(int count) const;

    /// Called about every 20 milliseconds while the filter runs or has an open editor.
    /// [main-thread]
    virtual void OnUITimerTick();

public:
    /// Plain accessors.
    /// [main-thread]
    UString GetID() const { return mUniqueID; }
    UString GetDisplayName() const { return mDisplayName; }
    void SetDisplayName(UString const& name) { mDisplayName = name; }
    IAudioFilterHost* GetAudioFilterHost() const noexcept { return mHost.load(std::memory_order_acquire); }
    float GetSampleRate() const noexcept { return mSampleRate; }
    int GetBlockSize() const noexcept { return mBlockSize; }
    RenderingContext GetRenderingContext() const noexcept { return mRenderingContext; }
    bool IsSuspended() const noexcept { return mSuspended.load(std::memory_order_relaxed); }
    bool IsLoadingSettings() const noexcept { return mLoadingSettings; }
    /// Moves whenever something that belongs to the filter's state has changed; only that it moved means anything. What
    /// a subclass stored before it bumped the count is there for whoever sees it moved.
    /// [any-thread]
    int GetParameterDirtyCount() const noexcept { return mParameterDirtyCount.load(std::memory_order_acquire); }
    void BumpParameterDirtyCount() noexcept { mParameterDirtyCount.fetch_add(1, std::memory_order_release); }

    /// Buses. GetBusConfiguration replaces what the arguments held.
    /// [main-thread]
    Buses const& GetInputBuses() const noexcept { return mInputBuses; }
    Buses const& GetOutputBuses() const noexcept { return mOutputBuses; }
    void GetBusConfiguration(Buses& inputs, Buses& outputs) const;
    int GetNumberOfInputChannels() const;
    int GetNumberOfOutputChannels() const;

    /// The shape of the track that the filter sits on, and of what comes in beside it. A change fires the target-format
    /// signal; an equal side-chain bus changes nothing. What a smaller side chain loses is disconnected first. A
    /// running filter takes buffers for as many main channels as it was resumed with.
    /// [main-thread]
    vynmediatypes::AudioBusDescription GetMainTargetBus() const { return mMainTargetBus; }
    void SetMainTargetBus(vynmediatypes::AudioBusDescription const& bus);
    vynmediatypes::AudioChannelLayout GetChannelMapTargetChannelLayout() const { return mMainTargetBus.GetLayout(); }
    void SetChannelMapTargetChannelLayout(vynmediatypes::AudioChannelLayout const& layout);
    vynmediatypes::AudioBusDescription GetSideChainTargetBus() const { return mSideChainTargetBus; }
    void SetSideChainTargetBus(vynmediatypes::AudioBusDescription const& bus);
    std::uint64_t GetSideChainTargetBusChannelCount() const;

    /// Channel maps: which target channel each filter channel is connected with, counted through all buses in order.
    /// Target channels are those of the main target bus, for the inputs followed by those of the side-chain target bus;
    /// -1 is none. The filter renders by its maps when they are in use, which Resume looks at. A change is announced
    /// with the map before and since; the block that renders meanwhile has some channels as they were.
    /// [main-thread]
    bool GetUseChannelMap() const noexcept { return mUseChannelMap; }
    void SetUseChannelMap(bool use) noexcept { mUseChannelMap = use; }
    vynmediatypes::ChannelMap GetChannelMap(Direction direction) const;
    void SetChannelMap(vynmediatypes::ChannelMap const& map, Direction direction);
    /// Connects a filter channel with a target, which leaves its former filter channel. A negative filter channel only
    /// frees the target, a negative target only the filter channel.
    /// [main-thread]
    void AssignChannelMapping(Direction direction, int filterChannel, int targetChannel);
    void RemoveChannelMapping(Direction direction, int filterChannel);
    /// Connects channels of the same number, as far as both sides go. Announces nothing; rendering follows with Resume.
    /// [main-thread & suspended]
    void SetDefaultChannelMap(Direction direction);
    /// Whether every channel of the filter, and no other, is connected with the target channel of its number.
    /// [main-thread]
    bool IsChannelMapDefault(Direction direction) const;
    /// Connects the side-chain target bus with input channels behind the main ones that no connection uses.
    /// @param disconnectFirst  frees those channels before
    /// [main-thread]
    void AutoConnectSideChainChannels(bool disconnectFirst);
    /// The filter channel that is connected with a target channel, or a negative number.
    /// [main-thread]
    int GetEffectChannelIndexForTarget(int targetChannel, Direction direction) const;
    /// Both maps as stored in a list of settings (docs/formats.md). False when maps are not in use or one was not
    /// whole; what could be read is taken then. Loading announces nothing; rendering follows with Resume.
    /// @param fillUnmapped  connects channels that are not mentioned with the target of their number
    /// [main-thread & suspended]
    bool LoadChannelMapSettings(vyncore::proplist::PropList const* list, bool fillUnmapped);
    bool SaveChannelMapSettings(vyncore::proplist::PropList* list) const;
    /// utility::BuildBestFitChannelMap.
    /// [any-thread]
    static vynmediatypes::ChannelMap BuildBestFitChannelMap(Buses const& buses,
                                                            vynmediatypes::AudioChannelLayout const& targetLayout);

    /// Hands a message to the process side. On a suspended filter it runs before Post returns.
    /// [main-thread]
    void Post(boost::intrusive_ptr<Message> message);

    /// A new, suspended filter of the same ID with the same buses, rate, settings, maps and target buses; the block
    /// size is its own. Null when none can be made. What a plug-in throws goes to the caller.
    /// [main-thread]
    static boost::intrusive_ptr<AudioFilter> Clone(boost::intrusive_ptr<AudioFilter> filter);

    /// An open editor keeps the filter's timer tick alive.
    /// [main-thread]
    void EditorAttached();
    void EditorDetached();

protected:
    /// Fires the latency signal; off the main thread it only traces, and the news is lost.
    /// [main-thread]
    void SendLatencyChanged();
    /// For a subclass whose buses changed by themselves.
    /// [main-thread]
    void SendBusConfigurationChanged();
    /// Sends a value to SetParameter in step with the audio; on a suspended filter before it returns. Somebody must
    /// hold the filter, so a constructor can't.
    /// [main-thread]
    void PostSetParameter(int index, float value);

    /// Tools of RequestIOConfiguration: they fire nothing.
    /// [main-thread & suspended]
    void AddInputBus(vynmediatypes::AudioBusDescription const& bus);
    void AddOutputBus(vynmediatypes::AudioBusDescription const& bus);
    void AddInputBuses(Buses const& buses);
    void AddOutputBuses(Buses const& buses);
    void ClearInputBusConfiguration();
    void ClearOutputBusConfiguration();
    void ClearBusConfiguration();
    /// Hands the layouts of the buses to RequestIOConfiguration.
    /// [main-thread & suspended]
    void DoRequestIOConfiguration(Buses const& inputs, Buses const& outputs);
    /// Tries the layout on both sides. The buses stay as the request left them.
    /// [main-thread & suspended]
    bool IsChannelFormatSupported(vynmediatypes::AudioChannelLayout const& layout);

private:
    void StartProcessing();
    std::exception_ptr FlushAll();
    void Tick();
    void AddTimerRef();
    void ReleaseTimerRef();
    void BuildChannelMaps();
    void UpdateChannelMapArraysForRendering();
    vynmediatypes::ChannelMap& MapOf(Direction direction) noexcept;
    vynmediatypes::ChannelMap const& MapOf(Direction direction) const noexcept;
    template <class Change>
    void ChangeChannelMap(Direction direction, Change const& change);
    void DisconnectLostSideChain(int former, int remaining);
    void ChangeEditing(int index, bool editing);
    bool StoreEditing(int index, bool editing);

    RenderingContext mRenderingContext = kRenderingContextRealTime;
    ProcessMessageHandler mMessageHandler;
    boost::signals2::scoped_connection mUITimerConnection;
    std::int32_t mUITimerReferenceCount = 0;
    UString const mUniqueID;
    UString mDisplayName;
    std::atomic<IAudioFilterHost*> mHost{nullptr}; ///< plug-ins ask on any thread
    float mSampleRate = 0.0f;
    double mSelectionLeft = 0.0;
    double mCurrentDuration = 0.0;
    std::int32_t mBlockSize = 0;
    Buses mInputBuses;
    Buses mOutputBuses;
    std::atomic<bool> mSuspended{true};
    std::atomic<std::int32_t> mParameterDirtyCount{0};
    bool mLoadingSettings = false;
    vynmediatypes::AudioBusDescription mMainTargetBus;
    vynmediatypes::AudioBusDescription mSideChainTargetBus;

    vynmediatypes::ChannelMap mInputMap;
    vynmediatypes::ChannelMap mOutputMap;
    mutable boost::recursive_mutex mChannelMapMutex;
    ChannelRouter mRouter;

    std::vector<bool> mParametersBeingEdited;
    mutable std::recursive_mutex mEditingMutex; ///< plug-ins report gestures on any thread
    bool mUseChannelMap = false;
};

} // namespace vynaudiofilterhost
