#pragma once

#include "plugins/VSTFixtureConfiguration.h"
#include "plugins/VSTFixtureSnapshot.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

namespace vynfixtures {

/// Memory of a speaker arrangement with room for kVSTFixtureMaxSpeakers.
struct VSTFixtureSpeakers {
    vynaudiofilterhost::vst::VstSpeakerArrangement arrangement;
    vynaudiofilterhost::vst::VstSpeakerProperties further[kVSTFixtureMaxSpeakers - 8];
};

/// An effect that behaves as its module is configured and files each call. Made by an entry function; effClose ends it.
/// What lies between the fields of its record is filled, so that a host that writes there is found out.
class VSTFixtureEffect : public vynaudiofilterhost::vst::AEffect {
public:
    using AudioMaster = vynaudiofilterhost::vst::AudioMasterFunction;
    using AEffect = vynaudiofilterhost::vst::AEffect;

    /// What an entry function returns; `entry` is the VSTFixtureOpcode of its name.
    /// [main-thread]
    static AEffect* Make(AudioMaster host, std::int32_t entry);

    ~VSTFixtureEffect();
    VSTFixtureEffect(VSTFixtureEffect const&) = delete;
    VSTFixtureEffect& operator=(VSTFixtureEffect const&) = delete;

private:
    VSTFixtureEffect(AudioMaster host, VSTFixtureConfiguration const& configuration);

    void Begin(std::int32_t entry);
    void FillRecord();
    bool IsRecordSpoilt() const;

    std::intptr_t Dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);
    /// Each answers its opcodes, and leaves others to the next.
    std::intptr_t AnswerOfParameter(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr);
    std::intptr_t AnswerOfState(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr);
    std::intptr_t AnswerOfBuses(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr);
    std::intptr_t AnswerOfEditor(std::int32_t opcode, void* ptr);
    std::intptr_t AnswerOfEffect(std::int32_t opcode, void* ptr);
    std::intptr_t GetEditorRect(vynaudiofilterhost::vst::ERect** rect);
    std::intptr_t NextOfShell(char* name);
    std::intptr_t GetProperties(std::int32_t index, void* ptr) const;
    std::intptr_t GetChunk(void** bytes);
    void SetChunk(std::intptr_t size, void const* bytes);
    std::intptr_t SetArrangements(void const* input, void const* output);
    std::intptr_t GetArrangements(void* input, void* output);
    void TakeEvents(void const* block) const;

    void Process(std::int32_t opcode, float** in, float** out, std::int32_t frames);
    void SetParameter(std::int32_t index, float value);
    float GetParameter(std::int32_t index);

    /// Files the call, does what the configuration wants done in it, and throws when told to.
    void Enter(std::int32_t opcode, std::int32_t index, std::intptr_t value, void const* ptr, float opt);
    void ChangeCounts();
    void CallHost(VSTFixtureHostCall const& call);
    void CallHostOnOwnThread();

    float* ValueOf(std::int32_t index);
    VSTFixtureParameter const* FindParameter(std::int32_t index) const;

    VSTFixtureConfiguration const mConfiguration;
    AudioMaster const mHost;
    int mNumber = 0;
    int mShellIndex = 0;
    int mProgram = 0;
    float mValues[16][16] = {}; ///< [program][parameter]
    std::vector<unsigned char> mChunk;
    float mHeard = 0.0f; ///< keeps the reading of inputs without an output from being left out
    VSTFixtureSpeakers mInputSpeakers = {};
    VSTFixtureSpeakers mOutputSpeakers = {};
    vynaudiofilterhost::vst::ERect mEditorRect = {};
    bool mEditorOpen = false;
    bool mRequested[2] = {}; ///< input and output, by the last request that was accepted
    std::atomic<bool> mClosing{false};
    std::thread mOwnThread;
};

/// Writes the listed text, or "prefix number" when it is null.
/// [any-thread]
void WriteVSTFixtureText(char* buffer, VSTFixtureText const* listed, char const* prefix, int number);

} // namespace vynfixtures
