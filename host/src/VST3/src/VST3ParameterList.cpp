#include "vynaudiofilterhost/VST3/src/VST3ParameterList.h"

#include "vynaudiofilterhost/VST3/src/VST3Text.h"

#include <algorithm>
#include <numeric>
#include <string_view>

namespace vynaudiofilterhost::vst3 {

using Steinberg::Vst::IEditController;
using Steinberg::Vst::ParameterInfo;
using Steinberg::Vst::ParamID;

namespace {

constexpr std::size_t kUsualTextLength = 16;

} // namespace

void VST3ParameterList::Reserve(std::size_t count) {
    mIDs.reserve(count);
    mShown.reserve(count);
    mTexts.reserve(count * kUsualTextLength);
}

void VST3ParameterList::Show(std::int32_t place, ParameterInfo const& info) {
    std::u16string_view const title = TextOf(info.title);
    std::u16string_view const label = TextOf(info.units);
    mShown.push_back({info.id, place, info.flags, info.stepCount, static_cast<std::uint32_t>(mTexts.size()),
                      static_cast<std::uint16_t>(title.size()), static_cast<std::uint16_t>(label.size())});
    mTexts.append(title).append(label);
}

void VST3ParameterList::Finish() {
    mIndexesByID.clear();
    if (std::ranges::is_sorted(mShown, {}, &Shown::id))
        return;
    mIndexesByID.resize(mShown.size());
    std::iota(mIndexesByID.begin(), mIndexesByID.end(), 0);
    std::ranges::stable_sort(mIndexesByID, {}, [this](std::uint32_t index) { return mShown[index].id; });
}

std::int32_t VST3ParameterList::FindIndex(ParamID id) const noexcept {
    // Most plug-ins number their parameters from 0 without a gap.
    if (id < mShown.size() && mIndexesByID.empty() && mShown[id].id == id && (id == 0 || mShown[id - 1].id != id))
        return static_cast<std::int32_t>(id);
    if (mIndexesByID.empty()) {
        auto const found = std::ranges::lower_bound(mShown, id, {}, &Shown::id);
        return found != mShown.end() && found->id == id ? static_cast<std::int32_t>(found - mShown.begin()) : -1;
    }
    auto const idOf = [this](std::uint32_t index) { return mShown[index].id; };
    auto const found = std::ranges::lower_bound(mIndexesByID, id, {}, idOf);
    return found != mIndexesByID.end() && idOf(*found) == id ? static_cast<std::int32_t>(*found) : -1;
}

VST3ParameterInfo& VST3ParameterList::GetInfo(std::int32_t index, IEditController& controller) {
    auto const place = static_cast<std::size_t>(index);
    if (mInfos.empty())
        mInfos.resize(mShown.size());
    if (!mInfos[place]) {
        Shown const& shown = mShown[place];
        auto const texts = std::u16string_view(mTexts).substr(shown.text);
        VST3ParameterFacts const facts{shown.id,
                                       shown.place,
                                       shown.flags,
                                       shown.stepCount,
                                       texts.substr(0, shown.titleLength),
                                       texts.substr(shown.titleLength, shown.labelLength)};
        mInfos[place] = new VST3ParameterInfo(&controller, facts);
    }
    return *mInfos[place];
}

void VST3ParameterList::ReadTitles(IEditController& controller) {
    for (std::int32_t index = 0; index < GetCount(); ++index)
        GetInfo(index, controller).ReadTitle();
}

} // namespace vynaudiofilterhost::vst3
