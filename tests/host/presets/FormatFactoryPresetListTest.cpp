#include "vynaudiofilterhost/presets/FormatFactoryPresetList.h"

#include "host/HostTest.h"
#include "vyncore/debug/Trace.h"

namespace {

using namespace vyntest;

TEST(FormatFactoryPresetListTest, TheFirstParameterPresetShapesTheTable) {
    std::vector<std::string> texts;
    vyncore::debug::SetTraceSink([&](int, auto, std::string_view text) { texts.emplace_back(text); });
    PropList list;
    boost::intrusive_ptr<PresetList> const presets(new PresetList(list));
    FormatFactoryPresetList(nullptr);
    FormatFactoryPresetList(presets);
    presets->AppendPreset(u"A")->SetPresetType(PresetData::kPresetTypeChunkData);
    FormatFactoryPresetList(presets);
    EXPECT_TRUE(texts.empty());

    presets->AppendPreset(u"B\u00e4r")->SetParamList({0.1f, 1, 1234567.875f});
    presets->AppendPreset(u"C")->SetParamList({-0.5f, 1e-9f, 0});
    presets->AppendPreset(u"D")->SetParamList({1, 2});
    presets->AppendPreset(u"E")->SetDataFromExistingPreset(*presets->GetPreset(u"C"));
    presets->GetPreset(u"E")->SetVersion(1.0f);
    list.CreateList("no UTF-8 \xFF");
    FormatFactoryPresetList(presets);
    vyncore::debug::SetTraceSink({});
    EXPECT_EQ(texts, std::vector<std::string>{R"(const int kNumFactoryPresets = 6;
const int kNumFactoryParams = 3;

struct PresetData
{
	char*		Name;
	float		Params[kNumFactoryParams];
};

PresetData sPresets[kNumFactoryPresets] = {
	  { "A", {  ***placeholder***}}
	, { "Bär", {   0.10000000f, 1.0000000f, 1234567.9f}}
	, { "C", {   -0.50000000f, 9.9999997e-10f, 0.0000000f}}
	, { "D", {  ***placeholder***}}
	, { "E", {  ***placeholder***}}
	, { "no UTF-8 �", {  ***placeholder***}}
};
)"});
}

} // namespace
