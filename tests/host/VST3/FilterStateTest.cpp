#include "FilterFixture.h"

#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/VST3/src/VST3PresetFile.h"
#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"

#include <cstring>

namespace {

using namespace vyntest;
using namespace std::string_literals;
using Bytes = PresetData::Bytes;

FixtureBlob Blob(std::string const& bytes) {
    FixtureBlob blob{.size = static_cast<int>(bytes.size())};
    std::memcpy(blob.bytes, bytes.data(), bytes.size());
    return blob;
}

std::string Text(FixtureBlob const& blob) {
    return {reinterpret_cast<char const*>(blob.bytes), static_cast<std::size_t>(blob.size)};
}

Bytes Chunk(std::string const& bytes) {
    return Bytes(bytes.begin(), bytes.end());
}

// 5 and 3 bytes, each size in eight, and the bytes of both.
std::string const kWholeChunk = "\5\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0compoctl"s;

class FilterStateTest : public FilterTest {
protected:
    void OpenWithStates(std::string const& component, std::string const& controller) {
        mConfiguration.stateHoldsGain = false;
        mConfiguration.componentState = Blob(component);
        mConfiguration.controllerState = Blob(controller);
        Open(mConfiguration);
        fixture->ClearCalls();
    }

    // What the plug-in is told of a chunk.
    std::vector<std::string> CallsOfLoading(Bytes const& chunk) {
        mPreset.SetVersion(1.0f);
        mPreset.SetPresetType(PresetData::kPresetTypeChunkData);
        mPreset.SetChunkData(chunk.data(), chunk.size());
        fixture->ClearCalls();
        EXPECT_TRUE(filter->LoadSettings(mPreset));
        return fixture->CallTexts({"setState", "setComponentState"});
    }

    Bytes SavedChunk() {
        Bytes chunk;
        EXPECT_TRUE(filter->SaveChunkData(mPreset));
        mPreset.GetChunkData(chunk);
        return chunk;
    }

    FixtureConfiguration mConfiguration;
    vyncore::proplist::PropList mList;
    PresetData mPreset{mList};
};

TEST_F(FilterStateTest, ChunkHoldsBothStatesAndGoesBackInOrder) {
    OpenWithStates("compo", "ctl");
    EXPECT_TRUE(filter->DoPresetsUseChunkData());
    EXPECT_EQ(SavedChunk(), Chunk(kWholeChunk));
    EXPECT_EQ(mPreset.GetVersion(), 1.0f);
    EXPECT_EQ(mPreset.GetPresetType(), PresetData::kPresetTypeChunkData);
    EXPECT_THAT(CallsOfLoading(Chunk(kWholeChunk)),
                ElementsAre("Component.setState(5)", "Controller.setComponentState(5)", "Controller.setState(3)"));
    EXPECT_EQ(Text(fixture->Snapshot().componentState), "compo");
    EXPECT_EQ(Text(fixture->Snapshot().controllerComponentState), "compo");
    EXPECT_EQ(Text(fixture->Snapshot().controllerState), "ctl");
    EXPECT_TRUE(filter->WasStateTaken());
}

TEST_F(FilterStateTest, StateThatAPluginRefusesToGiveCountsAsNone) {
    mConfiguration.Fail(FixtureFault::ControllerGetStateFails);
    OpenWithStates("compo", "ctl");
    std::string const chunk = "\5\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0compo"s;
    EXPECT_EQ(SavedChunk(), Chunk(chunk));
    EXPECT_THAT(CallsOfLoading(SavedChunk()), ElementsAre("Component.setState(5)", "Controller.setComponentState(5)"));
    mConfiguration.Fail(FixtureFault::ComponentGetStateFails);
    OpenWithStates("compo", "ctl");
    mPreset.Clear();
    EXPECT_THAT(SavedChunk(), IsEmpty());
    EXPECT_TRUE(mPreset.IsEmpty());
}

TEST_F(FilterStateTest, DamagedChunksHandOverWhatIsWhole) {
    OpenWithStates("", "");
    std::string const withoutComponent = "\0\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0ctl"s;
    EXPECT_THAT(CallsOfLoading(Chunk(withoutComponent)), ElementsAre("Controller.setState(3)"));
    for (std::size_t length = 1; length < kWholeChunk.size(); ++length) {
        SCOPED_TRACE(length);
        std::size_t const calls = length < 16 + 5 ? 0 : 2;
        Bytes const cut = Chunk(kWholeChunk.substr(0, length));
        EXPECT_EQ(CallsOfLoading(cut).size(), calls);
        EXPECT_FALSE(filter->IsStateWhole(mPreset));
    }
    Bytes const noise(std::size_t{64} << 20, 0xA5);
    EXPECT_THAT(CallsOfLoading(noise), IsEmpty());
    EXPECT_THAT(CallsOfLoading(Chunk(kWholeChunk + "more")).size(), 3);
    EXPECT_TRUE(filter->IsStateWhole(mPreset));
}

TEST_F(FilterStateTest, RefusalAndExceptionsOfThePluginShow) {
    mConfiguration.Fail(FixtureFault::SetStateFails);
    OpenWithStates("compo", "ctl");
    CallsOfLoading(Chunk(kWholeChunk));
    EXPECT_FALSE(filter->WasStateTaken());
    mConfiguration.faults = 0;
    mConfiguration.ThrowIn("Component.setState");
    OpenWithStates("compo", "ctl");
    int changes = 0;
    filter->ConnectPresetChanged([&] { ++changes; });
    int const dirty = filter->GetParameterDirtyCount();
    EXPECT_ANY_THROW(filter->LoadSettings(mPreset));
    EXPECT_FALSE(filter->IsLoadingSettings());
    EXPECT_FALSE(filter->WasStateTaken());
    EXPECT_EQ(changes, 1);
    EXPECT_NE(filter->GetParameterDirtyCount(), dirty);
    // What was stored is not lost for what the plug-in can't give.
    mConfiguration.ThrowIn("Controller.getState");
    OpenWithStates("compo", "ctl");
    EXPECT_ANY_THROW(filter->SaveSettings(mPreset));
    Bytes chunk;
    EXPECT_TRUE(mPreset.GetChunkData(chunk));
    EXPECT_EQ(chunk, Chunk(kWholeChunk));
}

TEST_F(FilterStateTest, PresetFilesTravel) {
    OpenWithStates("compo", "ctl");
    SavedChunk();
    IPresetExchange::Bytes file;
    vyncore::UString reason;
    EXPECT_THAT(filter->GetPresetFileExtensions(), ElementsAre(u"vstpreset"));
    ASSERT_TRUE(filter->WritePresetFile(mPreset, u"vstpreset", file, reason));
    // As the public form has it: the header, the states, the list of them.
    ASSERT_EQ(file.size(), 48u + 8 + 8 + 2 * 20);
    std::string const text(file.begin(), file.end());
    EXPECT_TRUE(text.starts_with("VST3\1\0\0\0"s));
    EXPECT_TRUE(text.substr(40).starts_with(
        "\x38\0\0\0\0\0\0\0compoctlList\2\0\0\0Comp\x30\0\0\0\0\0\0\0\5\0\0\0\0\0\0\0Cont\x35"s));
    EXPECT_TRUE(filter->IsPresetFile(file));

    vyncore::proplist::PropList list;
    PresetData read(list);
    ASSERT_TRUE(filter->ReadPresetFile(file, read, reason));
    EXPECT_TRUE(read == mPreset);
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_FALSE(filter->ReadPresetFile(std::span(file).first(length), read, reason)) << length;
    EXPECT_TRUE(read == mPreset);
    file[8] = file[8] == '0' ? '1' : '0';
    EXPECT_FALSE(filter->ReadPresetFile(file, read, reason));
    EXPECT_NE(reason.find(u"and this is"), vyncore::UString::npos);
    mPreset.SetChunkData(file.data(), 20);
    IPresetExchange::Bytes const former = file;
    EXPECT_FALSE(filter->WritePresetFile(mPreset, u"vstpreset", file, reason));
    EXPECT_EQ(reason, u"the preset holds no state that is whole");
    EXPECT_EQ(file, former);
}

} // namespace
