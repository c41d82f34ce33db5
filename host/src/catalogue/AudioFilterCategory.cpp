#include "vynaudiofilterhost/catalogue/AudioFilterCategory.h"

#include "vyncore/config/Localizer.h"

#include <map>
#include <string>

namespace vynaudiofilterhost {

namespace {

struct CategoryNames {
    char const* invariant;
    char const* localised;
};

constexpr std::int32_t kLastInternalCategory = 53;

CategoryNames const* FindNames(AudioFilterCategory category) {
    static std::map<AudioFilterCategory, CategoryNames> const names = {
        {kCategoryEffect, {"Effect", "$$$/vynaudiofilterhost/componentdescriptor/category/Effect=Effect"}},
        {kCategorySynth, {"Synth", "$$$/vynaudiofilterhost/componentdescriptor/category/Synth=Synth"}},
        {kCategoryAnalysis, {"Analysis", "$$$/vynaudiofilterhost/componentdescriptor/category/Analysis=Analysis"}},
        {kCategoryMastering, {"Mastering", "$$$/vynaudiofilterhost/componentdescriptor/category/Mastering=Mastering"}},
        {kCategorySpacializer,
         {"Spacializer", "$$$/vynaudiofilterhost/componentdescriptor/category/Spacializer=Spacializer"}},
        {kCategoryRoomFx, {"RoomFx", "$$$/vynaudiofilterhost/componentdescriptor/category/RoomFx=RoomFx"}},
        {kCategorySurroundFx,
         {"SurroundFx", "$$$/vynaudiofilterhost/componentdescriptor/category/SurroundFx=SurroundFx"}},
        {kCategoryRestoration,
         {"Restoration", "$$$/vynaudiofilterhost/componentdescriptor/category/Restoration=Restoration"}},
        {kCategoryOfflineProcess,
         {"OfflineProcess", "$$$/vynaudiofilterhost/componentdescriptor/category/OfflineProcess=Offline"}},
        {kCategoryGenerator, {"Generator", "$$$/vynaudiofilterhost/componentdescriptor/category/Generator=Generator"}},
        {kCategoryVst3Analyzer,
         {"Vst3Analyzer", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Analyzer=Analyzer"}},
        {kCategoryVst3Delay, {"Vst3Delay", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Delay=Delay"}},
        {kCategoryVst3Distortion,
         {"Vst3Distortion", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Distortion=Distortion"}},
        {kCategoryVst3Dynamics,
         {"Vst3Dynamics", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Dynamics=Dynamics"}},
        {kCategoryVst3EQ, {"Vst3EQ", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3EQ=EQ"}},
        {kCategoryVst3Filter, {"Vst3Filter", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Filter=Filter"}},
        {kCategoryVst3Instrument,
         {"Vst3Instrument", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Instrument=Instrument"}},
        {kCategoryVst3Spatial,
         {"Vst3Spatial", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Spatial=Spatial"}},
        {kCategoryVst3Generator,
         {"Vst3Generator", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Generator=Generator"}},
        {kCategoryVst3Mastering,
         {"Vst3Mastering", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Mastering=Mastering"}},
        {kCategoryVst3Modulation,
         {"Vst3Modulation", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Modulation=Modulation"}},
        {kCategoryVst3PitchShift,
         {"Vst3PitchShift", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3PitchShift=Pitch Shift"}},
        {kCategoryVst3Restoration,
         {"Vst3Restoration", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Restoration=Restoration"}},
        {kCategoryVst3Reverb, {"Vst3Reverb", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Reverb=Reverb"}},
        {kCategoryVst3Surround,
         {"Vst3Surround", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Surround=Surround"}},
        {kCategoryVst3Tools, {"Vst3Tools", "$$$/vynaudiofilterhost/componentdescriptor/category/Vst3Tools=Tools"}},
    };
    auto const found = names.find(category);
    return found == names.end() ? nullptr : &found->second;
}

} // namespace

vyncore::UTF8String AudioFilterCategoryInvariantName(AudioFilterCategory category) {
    if (category == kCategoryNone)
        return "None";
    if (category >= kCategoryInternal && category <= kLastInternalCategory)
        return "Internal";
    auto const* names = FindNames(category);
    return names ? names->invariant : std::to_string(static_cast<std::int32_t>(category));
}

vyncore::UString AudioFilterCategoryDisplayName(AudioFilterCategory category) {
    auto const* names = FindNames(category);
    return names ? vyncore::config::Localizer::Get().GetString(names->localised) : vyncore::UString();
}

} // namespace vynaudiofilterhost
