#include "plugins/VSTFixtureEffect.h"
#include "plugins/VSTFixtureState.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace vynfixtures {

using namespace vynaudiofilterhost::vst;

namespace {

constexpr unsigned char kFiller = 0xA5;

VSTFixtureEffect& Of(AEffect* effect) {
    return *static_cast<VSTFixtureEffect*>(effect);
}

bool IsListed(VSTFixtureConfiguration const& configuration, std::uint32_t id) {
    auto const* const end = configuration.shellIDs + configuration.shellCount;
    return std::find(configuration.shellIDs, end, id) != end;
}

} // namespace

void WriteVSTFixtureText(char* buffer, VSTFixtureText const* listed, char const* prefix, int number) {
    if (listed != nullptr)
        listed->WriteTo(buffer);
    else
        std::snprintf(buffer, 64, "%s %d", prefix, number);
}

AEffect* VSTFixtureEffect::Make(AudioMaster host, std::int32_t entry) {
    VSTFixtureState& state = VSTFixtureState::Get();
    state.host = host;
    VSTFixtureConfiguration configuration = state.configuration;
    if (configuration.isShell) {
        auto const wanted = static_cast<std::uint32_t>(host(nullptr, audioMasterCurrentId, 0, 0, nullptr, 0.0f));
        configuration.category = wanted == 0 ? kPlugCategShell : configuration.category;
        configuration.uniqueID = wanted == 0 ? configuration.uniqueID : wanted;
        if (wanted != 0 && !IsListed(configuration, wanted))
            configuration.nullEntry = true;
    }
    std::unique_ptr<VSTFixtureEffect> made(new VSTFixtureEffect(host, configuration));
    made->Begin(entry);
    if (configuration.nullEntry)
        return nullptr;
    state.lastEffect = made.get();
    return made.release();
}

VSTFixtureEffect::VSTFixtureEffect(AudioMaster host, VSTFixtureConfiguration const& configuration)
    : AEffect(), mConfiguration(configuration), mHost(host), mNumber(++VSTFixtureState::Get().effectsMade) {
    FillRecord();
    for (int program = 0; program < 16; ++program)
        for (int index = 0; index < 16; ++index) {
            VSTFixtureParameter const* const listed = FindParameter(index);
            float const first = listed != nullptr ? listed->value : 0.5f;
            mValues[program][index] = program == 0 ? first : static_cast<float>(program) / 16.0f;
        }
    ++VSTFixtureState::Get().liveEffects;
}

VSTFixtureEffect::~VSTFixtureEffect() {
    mClosing = true;
    if (mOwnThread.joinable())
        mOwnThread.join();
    VSTFixtureState& state = VSTFixtureState::Get();
    state.snapshot.spoiltRecords += IsRecordSpoilt() ? 1 : 0;
    AEffect* self = this;
    state.lastEffect.compare_exchange_strong(self, nullptr);
    --state.liveEffects;
}

void VSTFixtureEffect::FillRecord() {
    std::fill(std::begin(unused1), std::end(unused1), kFiller);
    std::fill(std::begin(unused2), std::end(unused2), kFiller);
    std::fill(std::begin(unused3), std::end(unused3), kFiller);
    magic = mConfiguration.magic;
    numPrograms = mConfiguration.numPrograms;
    numParams = mConfiguration.numParams;
    numInputs = mConfiguration.numInputs;
    numOutputs = mConfiguration.numOutputs;
    flags = mConfiguration.flags;
    initialDelay = mConfiguration.initialDelay;
    uniqueID = mConfiguration.uniqueID;
    dispatcher = [](AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                    float opt) { return Of(effect).Dispatch(opcode, index, value, ptr, opt); };
    process = [](AEffect* effect, float** in, float** out, std::int32_t frames) {
        Of(effect).Process(kVSTFixtureProcess, in, out, frames);
    };
    processReplacing = [](AEffect* effect, float** in, float** out, std::int32_t frames) {
        Of(effect).Process(kVSTFixtureProcessReplacing, in, out, frames);
    };
    setParameter = [](AEffect* effect, std::int32_t index, float value) { Of(effect).SetParameter(index, value); };
    getParameter = [](AEffect* effect, std::int32_t index) { return Of(effect).GetParameter(index); };
}

bool VSTFixtureEffect::IsRecordSpoilt() const {
    auto const isFiller = [](unsigned char byte) { return byte == kFiller; };
    return !std::all_of(std::begin(unused1), std::end(unused1), isFiller) ||
           !std::all_of(std::begin(unused2), std::end(unused2), isFiller) ||
           !std::all_of(std::begin(unused3), std::end(unused3), isFiller) || magic != mConfiguration.magic ||
           uniqueID != mConfiguration.uniqueID || flags != mConfiguration.flags;
}

void VSTFixtureEffect::Begin(std::int32_t entry) {
    Enter(entry, 0, 0, nullptr, 0.0f);
    if (mConfiguration.ownThread && !mConfiguration.nullEntry)
        mOwnThread = std::thread([this] { CallHostOnOwnThread(); });
}

void VSTFixtureEffect::Enter(std::int32_t opcode, std::int32_t index, std::intptr_t value, void const* ptr, float opt) {
    RecordVSTCall({.sequence = 0,
                   .effect = mNumber,
                   .opcode = opcode,
                   .index = index,
                   .value = value,
                   .pointer = ptr,
                   .opt = opt,
                   .thread = 0});
    if (mConfiguration.change.during == opcode)
        ChangeCounts();
    for (int call = 0; call < mConfiguration.hostCallCount; ++call)
        if (mConfiguration.hostCalls[call].during == opcode)
            CallHost(mConfiguration.hostCalls[call]);
    ThrowInVSTCall(opcode);
}

void VSTFixtureEffect::ChangeCounts() {
    auto const change = [](std::int32_t& count, std::int32_t to) { count = to == -100 ? count : to; };
    change(numInputs, mConfiguration.change.numInputs);
    change(numOutputs, mConfiguration.change.numOutputs);
    change(numParams, mConfiguration.change.numParams);
    change(numPrograms, mConfiguration.change.numPrograms);
}

void VSTFixtureEffect::CallHost(VSTFixtureHostCall const& call) {
    VSTFixtureSnapshot& snapshot = VSTFixtureState::Get().snapshot;
    VSTFixtureHostAnswer spare;
    VSTFixtureHostAnswer& filed =
        snapshot.answerCount < kVSTFixtureMaxAnswers ? snapshot.answers[snapshot.answerCount++] : spare;
    filed = {};
    filed.during = call.during;
    filed.opcode = call.opcode;
    filed.thread = FixtureThread();
    std::fill(std::begin(filed.buffer), std::end(filed.buffer), '?');
    if (call.text[0] != '\0')
        std::memcpy(filed.buffer, call.text, sizeof call.text);
    filed.answer =
        mHost(call.withoutEffect ? nullptr : this, call.opcode, call.index, call.value, filed.buffer, call.opt);
    if (call.opcode == audioMasterGetTime && filed.answer != 0)
        std::memcpy(&filed.time, reinterpret_cast<void const*>(filed.answer), sizeof filed.time);
}

void VSTFixtureEffect::CallHostOnOwnThread() {
    while (!mClosing) {
        mHost(this, audioMasterVersion, 0, 0, nullptr, 0.0f);
        mHost(this, audioMasterGetTime, 0, 0, nullptr, 0.0f);
        mHost(this, audioMasterPinConnected, 0, 1, nullptr, 0.0f);
        VSTFixtureState::Get().ownThreadCalls += 3;
        std::this_thread::yield();
    }
}

std::intptr_t VSTFixtureEffect::Dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                         float opt) {
    // Gone behind this call, whether it throws or not.
    std::unique_ptr<VSTFixtureEffect> const closed(opcode == effClose ? this : nullptr);
    Enter(opcode, index, value, ptr, opt);
    return opcode == effClose ? 1 : AnswerOfParameter(opcode, index, value, ptr);
}

} // namespace vynfixtures
