#include "vynaudiofilterhost/VST/src/StaticAudioMasterCallback.h"

#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/VST/src/CanDoQuestion.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringUtils.h"

#include <array>
#include <atomic>
#include <cstring>
#include <string>
#include <string_view>

namespace vynaudiofilterhost::vst {

namespace {

constexpr std::intptr_t kInterfaceVersion = 2400;
constexpr std::intptr_t kVendorVersion = 4;
constexpr std::intptr_t kLanguageEnglish = 1;

constexpr std::int32_t kVendorLanguage = 0x70400000;
constexpr std::intptr_t kVendorLanguageAnswer = 0x11005678;

constexpr std::array<char const*, 7> kVendorLanguages{"de_DE", "fr_FR", "ja_JP", "es_ES", "it_IT", "ko_KR", "zh_CN"};

vyncore::debug::TracePoint theCanDoTrace(6, "VSTAudioFilter::StaticAudioMasterCallback");

// An effect may ask on a thread of its own.
std::atomic<std::int32_t> theCurrentShellPluginID{0};

std::intptr_t CopyText(std::string_view text, void* ptr) {
    if (!ptr)
        return 0;
    std::memcpy(ptr, text.data(), text.size());
    static_cast<char*>(ptr)[text.size()] = '\0';
    return 1;
}

std::int32_t VendorLanguageNumber() {
    std::string_view const locale = PluginModule::GetLocaleIdentifier();
    std::int32_t number = 1;
    for (char const* const known : kVendorLanguages) {
        if (locale == known)
            return number;
        ++number;
    }
    return 0;
}

std::intptr_t AnswerVendor(std::int32_t index, void* ptr) {
    if (index != kVendorLanguage || !ptr)
        return 0;
    std::int32_t const number = VendorLanguageNumber();
    std::memcpy(ptr, &number, sizeof number);
    return kVendorLanguageAnswer;
}

std::intptr_t AnswerCanDo(char const* question) {
    if (!question)
        return 0;
    vyncore::debug::DebugTrace(
        theCanDoTrace, [question] { return vyncore::string::UTF8to16(std::string("audioMasterCanDo->") + question); });
    return IsQuestion(question, "shellCategory") || IsQuestion(question, "sendVstTimeInfo") ? 1 : 0;
}

std::intptr_t AnswerWithoutInstance(std::int32_t opcode, std::int32_t index, void* ptr) {
    switch (opcode) {
    case audioMasterVersion:
        return kInterfaceVersion;
    case audioMasterCurrentId:
        return theCurrentShellPluginID.load(std::memory_order_relaxed);
    case audioMasterGetVendorString:
        return CopyText("Tolve Systems", ptr);
    case audioMasterGetProductString:
        return CopyText("Ondra", ptr);
    case audioMasterGetVendorVersion:
        return kVendorVersion;
    case audioMasterVendorSpecific:
        return AnswerVendor(index, ptr);
    case audioMasterCanDo:
        return AnswerCanDo(static_cast<char const*>(ptr));
    case audioMasterGetLanguage:
        return kLanguageEnglish;
    default:
        return 0;
    }
}

} // namespace

std::intptr_t StaticAudioMasterCallback(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                        void* ptr, float opt) noexcept {
    try {
        std::intptr_t const answer = EffectRegistry::Call(effect, opcode, index, value, ptr, opt).value_or(0);
        return answer != 0 ? answer : AnswerWithoutInstance(opcode, index, ptr);
    } catch (...) {
        // A listener of the application's, as a rule: the effect's code is not made for it.
        return 0;
    }
}

void SetCurrentShellPluginID(std::int32_t number) noexcept {
    theCurrentShellPluginID.store(number, std::memory_order_relaxed);
}

} // namespace vynaudiofilterhost::vst
