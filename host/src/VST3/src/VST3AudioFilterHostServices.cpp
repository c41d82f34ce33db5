#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/VST3/src/HostAttributeList.h"
#include "vynaudiofilterhost/VST3/src/HostMessage.h"
#include "vynaudiofilterhost/VST3/src/LanguageCode.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::tresult;

namespace {

constexpr std::u16string_view kHostName = u"Veltrano";

bool Is(Steinberg::TUID const iid, Steinberg::FUID const& known) {
    return std::memcmp(iid, known.toTUID(), sizeof(Steinberg::TUID)) == 0;
}

template <class Interface, class Object>
bool MakeInstance(Steinberg::TUID const cid, Steinberg::TUID const iid, void** object) {
    if (!Is(cid, Interface::iid) || !Is(iid, Interface::iid))
        return false;
    *object = static_cast<Interface*>(new (std::nothrow) Object);
    return *object != nullptr;
}

} // namespace

tresult VST3AudioFilter::queryInterface(Steinberg::TUID const iid, void** object) {
    if (!iid || !object)
        return Steinberg::kInvalidArgument;
    if (Is(iid, Steinberg::FUnknown::iid) || Is(iid, IHostApplication::iid))
        *object = static_cast<IHostApplication*>(this);
    else if (Is(iid, IComponentHandler::iid))
        *object = static_cast<IComponentHandler*>(this);
    else if (Is(iid, IComponentHandler2::iid))
        *object = static_cast<IComponentHandler2*>(this);
    else if (Is(iid, IUnitHandler::iid))
        *object = static_cast<IUnitHandler*>(this);
    else if (Is(iid, IVST3TolveVendorSpecificHost::iid))
        *object = static_cast<IVST3TolveVendorSpecificHost*>(this);
    else
        *object = mRunLoop->Query(iid);
    return *object ? kResultOk : Steinberg::kNoInterface;
}

tresult VST3AudioFilter::getName(Steinberg::Vst::String128 name) {
    if (!name)
        return Steinberg::kInvalidArgument;
    *std::copy(kHostName.begin(), kHostName.end(), name) = u'\0';
    return kResultOk;
}

tresult VST3AudioFilter::createInstance(Steinberg::TUID cid, Steinberg::TUID iid, void** object) {
    if (!cid || !iid || !object)
        return Steinberg::kInvalidArgument;
    if (MakeInstance<Steinberg::Vst::IMessage, HostMessage>(cid, iid, object) ||
        MakeInstance<Steinberg::Vst::IAttributeList, HostAttributeList>(cid, iid, object))
        return kResultOk;
    *object = nullptr;
    return kResultFalse;
}

tresult VST3AudioFilter::setDirty(Steinberg::TBool) {
    return kResultOk;
}

tresult VST3AudioFilter::requestOpenEditor(Steinberg::FIDString) {
    return kResultOk;
}

tresult VST3AudioFilter::startGroupEdit() {
    return kResultOk;
}

tresult VST3AudioFilter::finishGroupEdit() {
    return kResultOk;
}

Steinberg::Vst::IContextMenu* VST3AudioFilter::createContextMenu(Steinberg::IPlugView*,
                                                                 Steinberg::Vst::ParamID const*) {
    return nullptr;
}

tresult VST3AudioFilter::executeMenuItem(int32) {
    return kResultOk;
}

tresult VST3AudioFilter::notifyUnitSelection(Steinberg::Vst::UnitID) {
    return kResultOk;
}

tresult VST3AudioFilter::notifyProgramListChange(Steinberg::Vst::ProgramListID, int32) {
    return kResultOk;
}

int VST3AudioFilter::GetLanguageCode() {
    return LanguageCodeForLocale(PluginModule::GetLocaleIdentifier());
}

int VST3AudioFilter::ReservedQuery() {
    return 0;
}

void VST3AudioFilter::ReservedCommand() {}

char const* VST3AudioFilter::GetLocale() {
    return PluginModule::GetLocaleIdentifier();
}

bool VST3AudioFilter::IsVirtualAudioFilterSupported() const {
    return mVendorProcessor != nullptr;
}

bool VST3AudioFilter::BeginVirtualPass(std::int64_t firstSample, std::int64_t sampleCount) {
    return mVendorProcessor && mVendorProcessor->BeginVirtualPass(firstSample, sampleCount);
}

bool VST3AudioFilter::EndVirtualPass() {
    return mVendorProcessor && mVendorProcessor->EndVirtualPass();
}

bool VST3AudioFilter::GetInputRange(std::int64_t firstOutput, std::int64_t outputCount, std::int64_t& firstInput,
                                    std::int64_t& inputCount) const {
    return mVendorProcessor && mVendorProcessor->GetInputRange(firstOutput, outputCount, firstInput, inputCount);
}

bool VST3AudioFilter::InvalidateInputRange(std::int64_t firstSample, std::int64_t sampleCount) {
    return mVendorProcessor && mVendorProcessor->InvalidateInputRange(firstSample, sampleCount);
}

int VST3AudioFilter::GetVirtualLatency() const {
    return GetInitialDelay();
}

bool VST3AudioFilter::IsOutputRangeReady(std::int64_t firstSample, std::int64_t sampleCount) const {
    return mVendorProcessor && mVendorProcessor->IsOutputRangeReady(firstSample, sampleCount);
}

} // namespace vynaudiofilterhost::vst3
