#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"

#include "host/HostTest.h"
#include "os/BundleFolder.h"
#include "support/TemporaryFolder.h"
#include "vyncore/strings/StringUtils.h"

#include <filesystem>

namespace {

using namespace vyntest;

/// The folder "root" is searched; what is found is told from there.
class ModuleFileSearchTest : public testing::Test {
protected:
    void Add(std::string const& path) const {
        mFolder.AddFolder("root/" + std::filesystem::path(path).parent_path().string());
        mFolder.AddFile("root/" + path);
    }

    std::vector<std::string> Find(std::vector<std::string> const& folders, ModuleFileKind const& kind) const {
        std::vector<UString> paths;
        for (std::string const& folder : folders)
            paths.push_back(mFolder.Path16("root/" + folder));
        std::vector<std::string> found;
        for (UString const& path : FindModuleFiles(paths, kind))
            found.push_back(vyncore::string::UTF16to8(path.substr(mFolder.Path16("root/").size())));
        return found;
    }

    TemporaryFolder const mFolder;
    std::string const mMachine = "Contents/" + vyncore::string::UTF16to8(os::GetBundleFolderName()) + "/";
};

TEST_F(ModuleFileSearchTest, FilesCountAndModulesForThisMachineInBundles) {
    std::string const bundle = "X.Vst3/" + mMachine;
    for (std::string const& path : std::vector<std::string>{
             "A.VST3", "a.vst3.txt", "b.vst3/b.vst3", "deep/er/c.vst3", "deep/c.so", "X.Vst3/Contents/Resources/no.so",
             "Empty.vst3/Contents/sparc64-linux/Empty.so", bundle + "X.SO", bundle + "file.vst3", bundle + "read.me",
             ".vst3/" + mMachine + "no.so"})
        Add(path);
    EXPECT_THAT(Find({""}, {.extension = u".vst3", .inBundles = true}),
                ElementsAre("A.VST3", "deep/er/c.vst3", "b.vst3/b.vst3", bundle + "X.SO", bundle + "file.vst3"));
    EXPECT_THAT(Find({"deep", "X.Vst3"}, {.extension = u".so"}),
                ElementsAre("deep/c.so", bundle + "X.SO", "X.Vst3/Contents/Resources/no.so"));
}

TEST_F(ModuleFileSearchTest, AFolderIsEnteredOnceHoweverItIsReached) {
    Add("X.vst3/" + mMachine + "X.so");
    Add("in/side.vst3");
    mFolder.AddFile("outside.vst3");
    mFolder.AddLink("root/Y.vst3", "X.vst3");
    mFolder.AddLink("root/in/up", "../..");
    mFolder.AddLink("root/z", "X.vst3"); // entered first, and no bundle by that name
    EXPECT_THAT(Find({"in", "missing", "X.vst3", ""}, {.extension = u".vst3", .inBundles = true}),
                ElementsAre("in/side.vst3", "in/up/outside.vst3", "in/up/root/Y.vst3/" + mMachine + "X.so"));
}

} // namespace
