#include "vynhost/StateFile.h"

#include "apps/CommandFailure.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/presets/PresetData.h"

#include <gtest/gtest.h>

#include <limits>
#include <list>
#include <string>

using namespace vynaudiofilterhost;
using vynhost::StateFile;

namespace {

// Of one parameter, with two kinds of preset file: "P", the letter of the kind, and the value in tenths. It writes no
// "two" of the value 1.
class TwoKindsFilter final : public AudioFilter, public IPresetExchange {
public:
    TwoKindsFilter() : AudioFilter(u"two", u"Two Kinds") {}

    int GetParameterCount() const override { return 1; }
    float GetParameter(int) const override { return value; }
    void SetParameter(int, float changed) override { value = changed; }

    std::vector<UString> GetPresetFileExtensions() const override { return {u"one", u"two"}; }
    bool IsPresetFile(std::span<unsigned char const> bytes) const override { return !bytes.empty() && bytes[0] == 'P'; }
    bool ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset, UString& reason) const override {
        if (bytes.size() < 3) {
            reason = u"it is cut short";
            return false;
        }
        preset.SetVersion(GetCurrentPresetVersion());
        preset.SetParamList(std::list<float>(bytes.size() - 2, static_cast<float>(bytes[2] - '0') / 10));
        return true;
    }
    bool WritePresetFile(PresetData const& preset, UString const& extension, Bytes& bytes,
                         UString& reason) const override {
        std::list<float> values;
        preset.GetParamList(values);
        reason = u"a two holds no one";
        if (extension == u"two" && values.front() == 1)
            return false;
        auto const tenths = static_cast<unsigned char>('0' + static_cast<int>(values.front() * 10));
        bytes = {'P', static_cast<unsigned char>(extension[0]), tenths};
        return true;
    }
    bool IsStateWhole(PresetData const& preset) const override {
        std::list<float> values;
        preset.GetParamList(values);
        return values.size() == 1;
    }
    bool WasStateTaken() const override { return true; }
    bool CanSelectFactoryPreset(int) const override { return false; }

    float value = 0.5F;
};

class StateFileTest : public testing::Test {
protected:
    std::string PathOf(std::string const& name) const { return mFolder.Path() / name; }

    std::string ContentOf(std::string const& name) const { return vyntest::ReadText(PathOf(name)); }

    std::string FailureOfSaving(std::string const& name) {
        return vyntest::FailureOf([&] {
            StateFile file(PathOf(name));
            file.Capture(*mFilter);
            file.Write();
        });
    }

    std::string FailureOfLoading(std::string const& name) {
        return vyntest::FailureOf([&] {
            StateFile file(PathOf(name));
            file.Read(*mFilter);
            file.Load(*mFilter);
        });
    }

    vyntest::TemporaryFolder mFolder;
    boost::intrusive_ptr<TwoKindsFilter> mFilter{new TwoKindsFilter};
};

TEST_F(StateFileTest, EndingOfTheNameSaysWhichKindIsWrittenAndTheContentWhichIsRead) {
    for (auto const& [name, content] : {std::pair{"a.one", "Po5"}, {"a.two", "Pt5"}, {"a.b.TWO", "Pt5"}}) {
        mFilter->value = 0.5F;
        EXPECT_EQ(FailureOfSaving(name), "none");
        EXPECT_EQ(ContentOf(name), content);
        mFilter->value = 0;
        EXPECT_EQ(FailureOfLoading(name), "none");
        EXPECT_EQ(mFilter->value, 0.5F) << name;
    }
    for (std::string const name : {"one", "a.ones", ".two", "a.one.xml", "a"}) {
        mFilter->value = 0.25F;
        EXPECT_EQ(FailureOfSaving(name), "none");
        EXPECT_TRUE(ContentOf(name).starts_with("<?xml")) << name;
        mFilter->value = 0;
        EXPECT_EQ(FailureOfLoading(name), "none");
        EXPECT_EQ(mFilter->value, 0.25F) << name;
    }
    mFolder.AddFile("plain.xml", "Pt3");
    EXPECT_EQ(FailureOfLoading("plain.xml"), "none");
    EXPECT_EQ(mFilter->value, 0.3F);
}

TEST_F(StateFileTest, StateThatCanNotBeHeldIsRefusedWithItsReasonAndTheOldFileStays) {
    mFolder.AddFile("a.two", "old");
    mFolder.AddFile("a.xml", "old");
    mFilter->value = 1;
    EXPECT_EQ(FailureOfSaving("a.two"), "1 cannot be written: a two holds no one");
    EXPECT_EQ(FailureOfSaving("a.one"), "none");
    mFilter->value = std::numeric_limits<float>::quiet_NaN();
    for (std::string const name : {"a.two", "a.xml"}) {
        EXPECT_EQ(FailureOfSaving(name), "1 cannot be written: the plug-in gave values that are no numbers");
        EXPECT_EQ(ContentOf(name), "old");
    }
}

TEST_F(StateFileTest, FileThatIsCutShortOrOfAnotherCountIsRefusedBeforeThePluginHearsOfIt) {
    for (auto const& [content, failure] :
         {std::pair{"Po", "1 cannot be used: it is cut short"},
          {"Po33", "1 is damaged, or of another version: the state in it is empty or not whole"},
          {"po3", "1 is no state file"}}) {
        mFolder.AddFile("a.one", content);
        EXPECT_EQ(FailureOfLoading("a.one"), failure);
        EXPECT_EQ(mFilter->value, 0.5F);
    }
}

} // namespace
