#include "FilterFixture.h"

#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/presets/PresetList.h"

#include <algorithm>
#include <list>

namespace {

using namespace vyntest;

class VSTFilterStateTest : public VSTFilterTest {
protected:
    static VSTFixtureConfiguration Programs(int count) {
        VSTFixtureConfiguration configuration;
        configuration.numParams = 2;
        configuration.numPrograms = count;
        return configuration;
    }

    static VSTFixtureConfiguration ChunkOf(std::int32_t size) {
        VSTFixtureConfiguration configuration;
        configuration.flags |= effFlagsProgramChunks;
        configuration.chunk.holdsValues = false;
        configuration.chunk.size = size;
        return configuration;
    }

    std::list<float> Values() const {
        std::list<float> values;
        preset->GetParamList(values);
        return values;
    }

    PropList list;
    boost::intrusive_ptr<PresetData> const preset{new PresetData(list)};
};

TEST_F(VSTFilterStateTest, StateIsTheValuesOrAChunkByTheFlags) {
    Open(Programs(0));
    filter->SetParameter(1, 0.25f);
    filter->SaveSettings(*preset);
    EXPECT_EQ(preset->GetPresetType(), PresetData::kPresetTypeParamList);
    EXPECT_EQ(preset->GetVersion(), filter->GetCurrentPresetVersion());
    EXPECT_THAT(Values(), ElementsAre(0.5f, 0.25f));
    EXPECT_FALSE(filter->DoPresetsUseChunkData());
    EXPECT_FALSE(filter->SaveChunkData(*preset));
    EXPECT_FALSE(filter->LoadChunkData(*preset));
    EXPECT_EQ(fixture->CountCalls(effGetChunk), 0);
    filter->SetParameter(1, 0.75f);
    EXPECT_TRUE(filter->LoadSettings(*preset));
    EXPECT_EQ(filter->GetParameter(1), 0.25f);

    Open(ChunkOf(12));
    EXPECT_TRUE(filter->DoPresetsUseChunkData());
    EXPECT_FALSE(filter->LoadSettings(*preset)) << "a preset of the other form";
    fixture->ClearCalls();
    filter->SaveSettings(*preset);
    EXPECT_THAT(fixture->Texts(), ElementsAre("effGetChunk(1, 0, pointer, 0)")) << "the program, not the bank";
    EXPECT_EQ(preset->GetPresetType(), PresetData::kPresetTypeChunkData);
    EXPECT_TRUE(Values().empty());
    fixture->ClearCalls();
    EXPECT_TRUE(filter->LoadSettings(*preset));
    EXPECT_THAT(fixture->Texts(), ElementsAre("effSetChunk(1, 12, pointer, 0)"));
    EXPECT_EQ(fixture->Snapshot().chunkSize, 12);
    EXPECT_EQ(std::string_view(reinterpret_cast<char const*>(fixture->Snapshot().chunk), 12), "chunkchunkch");
}

TEST_F(VSTFilterStateTest, ChunkThatIsNoneIsStoredAsAnEmptyOne) {
    for (auto const& [size, null] :
         {std::pair(0, false), std::pair(-5, false), std::pair(8, true), std::pair(-1, true)}) {
        VSTFixtureConfiguration configuration = ChunkOf(size);
        configuration.chunk.null = null;
        Open(configuration);
        preset->SetChunkData(reinterpret_cast<unsigned char const*>("old"), 3);
        filter->SaveSettings(*preset);
        EXPECT_EQ(preset->GetPresetType(), PresetData::kPresetTypeChunkData);
        PresetData::Bytes bytes;
        EXPECT_FALSE(preset->GetChunkData(bytes)) << size;
        fixture->ClearCalls();
        filter->LoadSettings(*preset);
        EXPECT_EQ(fixture->CountCalls(effSetChunk), 0) << "nothing to hand over";
        EXPECT_FALSE(filter->LoadChunkData(*preset));
    }
    Open(ChunkOf(8).ThrowIn(effGetChunk));
    EXPECT_NO_THROW(filter->SaveSettings(*preset));
    Open(ChunkOf(8).ThrowIn(effSetChunk));
    filter->SaveSettings(*preset);
    EXPECT_NO_THROW(EXPECT_TRUE(filter->LoadSettings(*preset)));
}

TEST_F(VSTFilterStateTest, ProgramNamesAreCutAt72Bytes) {
    VSTFixtureConfiguration configuration;
    configuration.AddProgram(VSTFixtureText::Filled(72, true)).AddProgram(VSTFixtureText::Filled(73, false));
    configuration.AddProgram("K\xC3\xBChl").AddProgram("");
    Open(configuration);
    fixture->ClearCalls();
    EXPECT_EQ(filter->GetNumFactoryPresets(), 4);
    EXPECT_EQ(filter->GetFactoryPresetName(0), UString(72, u'x'));
    EXPECT_EQ(filter->GetFactoryPresetName(1), UString(72, u'x'));
    EXPECT_EQ(filter->GetFactoryPresetName(2), u"K\u00FChl");
    EXPECT_EQ(filter->GetFactoryPresetName(3), u"");
    EXPECT_EQ(fixture->CountCalls(effSetProgram), 0) << "names don't need the program to be selected";
    fixture->ClearCalls();
    EXPECT_EQ(filter->GetFactoryPresetName(-1), u"");
    EXPECT_EQ(filter->GetFactoryPresetName(4), u"");
    EXPECT_THAT(fixture->Names(), IsEmpty());
}

TEST_F(VSTFilterStateTest, ListOfProgramsBeginsWithTheStateAndKeepsTheirNumbers) {
    VSTFixtureConfiguration configuration = Programs(0);
    configuration.AddProgram("First").AddProgram("").AddProgram("Third").AddProgram("First").AddProgram("Fifth");
    Open(configuration);
    filter->SetParameter(0, 0.125f);
    PropList listed;
    boost::intrusive_ptr<PresetList> const presets(new PresetList(listed));
    presets->AppendPreset(u"former");
    fixture->ClearCalls();
    filter->GetFactoryDefaultPresets(*presets);
    EXPECT_EQ(fixture->CountCalls(effSetProgram), 0);
    std::set<UString> names;
    presets->GetPresetNames(names);
    EXPECT_THAT(names, ElementsAre(u"Fifth", u"First", u"Third"));
    auto const first = presets->GetPreset(u"First");
    std::list<float> values;
    first->GetParamList(values);
    EXPECT_EQ(first->GetPresetType(), PresetData::kPresetTypeParamList);
    EXPECT_THAT(values, ElementsAre(0.125f, 0.5f)) << "the first is the present state and no program";
    for (auto const& [name, index] : {std::pair(u"Third", 2), std::pair(u"Fifth", 4)}) {
        auto const reference = presets->GetPreset(name);
        EXPECT_EQ(reference->GetPresetType(), PresetData::kPresetTypeFactoryPreset);
        EXPECT_EQ(reference->GetVersion(), filter->GetCurrentPresetVersion());
        EXPECT_EQ(reference->GetFactoryPresetName(), name);
        EXPECT_EQ(reference->GetFactoryIndex(), index) << "a program without a name keeps its number";
    }
    Open(Programs(0));
    filter->GetFactoryDefaultPresets(*presets);
    EXPECT_TRUE(listed.IsEmpty());
}

TEST_F(VSTFilterStateTest, ChosenProgramHandsItsStateToTheFirst) {
    for (bool const chunks : {false, true}) {
        VSTFixtureConfiguration configuration = Programs(5);
        configuration.flags |= chunks ? effFlagsProgramChunks : 0;
        Open(configuration);
        fixture->ClearCalls();
        int changed = 0;
        filter->ConnectPresetChanged([&] { ++changed; });
        filter->SetFactoryPreset(3);
        EXPECT_THAT(fixture->Texts({effSetProgram}),
                    ElementsAre("effSetProgram(0, 3, null, 0)", "effSetProgram(0, 0, null, 0)"));
        EXPECT_EQ(filter->GetParameter(0), 3.0f / 16.0f) << "program 0, with the values of program 3";
        EXPECT_EQ(filter->GetParameter(1), 3.0f / 16.0f);
        EXPECT_EQ(changed, 1);
        using Names = std::vector<std::string>;
        EXPECT_EQ(fixture->Names({effSetProgram, effGetChunk, effSetChunk}),
                  chunks ? Names({"effSetProgram", "effGetChunk", "effSetProgram", "effSetChunk"})
                         : Names({"effSetProgram", "effSetProgram"}));
        fixture->ClearCalls();
        for (int const none : {0, -1, 5, 1 << 30})
            filter->SetFactoryPreset(none);
        EXPECT_THAT(fixture->Names(), IsEmpty());
    }
}

TEST_F(VSTFilterStateTest, ReferenceToAProgramIsLoadedByItsNumberOrName) {
    Open(Programs(5));
    preset->SetVersion(filter->GetCurrentPresetVersion());
    preset->SetPresetType(PresetData::kPresetTypeFactoryPreset);
    preset->SetFactoryPresetName(u"Program 4");
    for (int const stored : {4, -1, 99}) {
        preset->SetFactoryIndex(stored);
        filter->SetParameter(0, 0.0f);
        EXPECT_TRUE(filter->LoadSettings(*preset));
        EXPECT_EQ(filter->GetParameter(0), 0.25f) << stored;
    }
    preset->SetFactoryPresetName(u"Program 0");
    fixture->ClearCalls();
    EXPECT_TRUE(filter->LoadSettings(*preset)) << "there is one, though it isn't selected";
    EXPECT_EQ(fixture->CountCalls(effSetProgram), 0);
    preset->SetFactoryPresetName(u"Program 9");
    EXPECT_FALSE(filter->LoadSettings(*preset));
}

TEST_F(VSTFilterStateTest, EffectIsBackAtTheFirstProgramWhateverItThrows) {
    VSTFixtureConfiguration configuration = Programs(5);
    Open(configuration.ThrowIn(kVSTFixtureGetParameter));
    fixture->ClearCalls();
    try {
        filter->SetFactoryPreset(3);
    } catch (std::exception const&) {
        // Whoever selects a program may hear of it.
    }
    EXPECT_EQ(fixture->Texts({effSetProgram}).back(), "effSetProgram(0, 0, null, 0)");
}

} // namespace
