#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/VST/src/EditorCallbacks.h"
#include "vynaudiofilterhost/VST/src/MidiEventBlock.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilterEditor.h"
#include "vynaudiofilterhost/VST/src/VSTChannelBuffers.h"
#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"
#include "vynaudiofilterhost/VST/src/VSTParameterInfo.h"
#include "vynaudiofilterhost/VST/src/VSTSpeakerArrangement.h"
#include "vynaudiofilterhost/VST/src/VSTTimeInfoRecord.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vynaudiofilterhost::vst {

/// The filter over one effect of a VST 2.x module.
///
/// Made by VSTPluginModule. It owns the effect: it opens it and answers its calls from then on, and closes it at its
/// end. The effect keeps the values of its parameters; they are set and read at once, on the caller's thread.
///
/// Threads: Process, SetCurrentOffset and ScheduleMIDIEvent belong to the process thread; parameters may be set and
/// read on any thread, as far as the effect stands it. The effect may call on any thread. Everything else belongs to
/// the main thread.
///
/// Invariants:
/// 1. The list of parameters is fixed by construction; an effect that has more of them later isn't followed.
/// 2. The effect is never handed fewer channel pointers than it says it has: a block for which there are none is
///    silent.
class VSTAudioFilter final : public AudioFilter, private VSTDispatcherBase, public IPresetExchange {
public:
    /// Takes the effect over and opens it. Throws nothing of the effect's.
    /// @param modulePath    of the file that the effect comes from
    /// @param nameFromFile  shows the title of that file, whatever the effect calls itself
    /// [main-thread]
    VSTAudioFilter(UString const& uniqueID, UString const& modulePath, AEffect* effect, bool nameFromFile);
    ~VSTAudioFilter() override;

    /// Something that is to live as long as the effect does, such as its code.
    /// [main-thread]
    void KeepAlive(std::shared_ptr<void const> companion) { mCompanion = std::move(companion); }

    // AudioFilter.
    void SetSampleRate(float sampleRate) override;
    void SetBlockSize(int blockSize) override;
    int GetMaxProcessingBlockSize() const override;
    void SetCurrentOffset(std::int64_t offset) override;
    void Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags) override;
    void SetAudioFilterHost(IAudioFilterHost* host) override;
    void Suspend() override;
    void Resume() override;
    int GetParameterCount() const override;
    void SetParameter(int index, float value) override;
    float GetParameter(int index) const override;
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override;
    UString GetParameterString(int index) override;
    bool DoPresetsUseChunkData() const override;
    void GetFactoryDefaultPresets(PresetList& list) const override;
    int GetNumFactoryPresets() const override;
    UString GetFactoryPresetName(int index) override;
    void SetFactoryPreset(int index) override;
    bool LoadChunkData(PresetData const& preset) override;
    bool SaveChunkData(PresetData& preset) const override;
    int GetInitialDelay() const override;
    bool CanUseSideChaining() const override;
    boost::intrusive_ptr<AudioFilterDescriptor> CreateFilterDescriptor(PluginLocator const& locator,
                                                                       bool internalFilter) override;
    bool HasCustomEditor() const override;
    boost::intrusive_ptr<AudioFilterEditor> CreateCustomEditor() override;
    void DestroyCustomEditor(boost::intrusive_ptr<AudioFilterEditor> editor) override;
    bool RequiresSymmetricIO() const override;
    bool IsMusicDevice() const override;
    void ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                           unsigned char data2) override;

    // IPresetExchange. [main-thread]
    std::vector<UString> GetPresetFileExtensions() const override;
    bool IsPresetFile(std::span<unsigned char const> bytes) const override;
    bool ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset, UString& reason) const override;
    bool WritePresetFile(PresetData const& preset, UString const& extension, Bytes& bytes,
                         UString& reason) const override;
    bool IsStateWhole(PresetData const& preset) const override;
    bool WasStateTaken() const override { return true; }
    bool CanSelectFactoryPreset(int index) const override;

    /// What an open editor answers to the effect, before the filter does.
    /// [main-thread]
    void AddEditorCallback(VSTAudioFilterEditor* editor, EffectCallback callback);
    void RemoveEditorCallback(VSTAudioFilterEditor* editor);

protected:
    void RequestIOConfiguration(Layouts const& inputLayouts, Layouts const& outputLayouts) override;

private:
    // Life.
    void Construct(UString const& modulePath, bool nameFromFile);
    bool ReadIsMusicDevice() const;
    void OpenEffect();
    void ReadName(UString const& modulePath, bool nameFromFile);
    void CloseEffect();
    bool HasEditorFlag() const noexcept;
    void DropEditor();

    // Buses.
    void BuildIOConfiguration();
    void BuildBusesFromArrangements();
    void BuildBusesFromCounts();
    void AddFurtherBuses(Direction direction, int first, int count);
    bool IsStereoPair(Direction direction, int channel, int count) const;
    bool NegotiateArrangements(Layouts::value_type const& input, Layouts::value_type const& output);
    void ReadArrangements();
    bool CanExpandMono(Layouts::value_type const& input, Layouts::value_type const& output) const;
    void ShowAsMono();
    void CountChannels();
    std::int32_t InputCount() const noexcept;
    std::int32_t OutputCount() const noexcept;

    // Processing.
    void ProcessEvents() noexcept;
    bool FitChannels(float**& in, float**& out, int numSamples) noexcept;
    void AllocateChannels();
    bool HasChannels() const noexcept;
    bool DoBusesCover(int inputs, int outputs) const noexcept;
    int ShownInputs() const noexcept { return mMonoExpansion ? 2 : mFilterInputs; }
    int ShownOutputs() const noexcept { return mMonoExpansion ? 2 : mFilterOutputs; }

    // Host callback.
    std::intptr_t AudioMasterCallback(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                      float opt);
    std::intptr_t AnswerGetTime();
    std::intptr_t AnswerPinConnected(std::int32_t channel, std::intptr_t side) const;
    std::intptr_t AnswerIOChanged();
    void Automate(std::int32_t index, float value);

    // State.
    void SnapshotFactoryPreset(int index, PresetData& preset) const;

    // Constant after construction.
    std::vector<boost::intrusive_ptr<VSTParameterInfo>> mParameterInfos;
    bool mMusicDevice = false;
    bool mRegistered = false;
    std::unique_ptr<MidiEventBlock> mEvents; ///< of a music device; filled and read on the process thread
    std::shared_ptr<void const> mCompanion;

    // Main thread.
    boost::intrusive_ptr<VSTAudioFilterEditor> mEditor;

    // Main thread, while the filter is suspended.
    SpeakerArrangementPointer mInputArrangement; ///< what the effect has answered; both or none
    SpeakerArrangementPointer mOutputArrangement;
    SpeakerArrangementPointer mAskedInput; ///< effects may hold on to what they were asked, until the next time
    SpeakerArrangementPointer mAskedOutput;

    // Process thread while the filter runs, main thread while it is suspended.
    bool mMonoExpansion = false; ///< a stereo effect that shows as mono
    std::vector<float> mSpareOutput;
    VSTChannelBuffers mChannels;
    int mFilterInputs = 0; ///< channels of all buses
    int mFilterOutputs = 0;
    std::int64_t mCurrentOffset = 0;

    // Any thread.
    VSTTimeInfoRecord mTimeInfo;
    EditorCallbacks mEditorCallbacks;
    std::atomic<int> mListedParameters{0}; ///< while the effect opens, those that it says it has
    std::atomic<int> mMainInputs{0};       ///< channels of the first bus
    std::atomic<int> mMainOutputs{0};
};

} // namespace vynaudiofilterhost::vst
