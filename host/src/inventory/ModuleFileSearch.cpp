#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"

#include "os/BundleFolder.h"
#include "os/FileSystem.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/ASCIICase.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost {

using os::FileIdentity;
using os::FileKind;
using vyncore::UString;

namespace {

bool EndsIn(std::u16string_view path, std::u16string_view extension) {
    return path.size() >= extension.size() &&
           vyncore::string::EqualsInASCIICase(path.substr(path.size() - extension.size()), extension);
}

class Walk {
public:
    explicit Walk(ModuleFileKind const& kind) : mKind(kind) {}

    void Start(UString const& folder) {
        mWaiting.push_back(folder);
        while (!mWaiting.empty()) {
            UString const next = std::move(mWaiting.back());
            mWaiting.pop_back();
            Enter(next);
        }
    }

    std::vector<UString> TakeModules() { return std::move(mModules); }

private:
    void Enter(UString const& folder) {
        // Before it is seen whether the folder is known: whoever came through a link of another name saw no bundle.
        if (mKind.inBundles && IsBundle(folder, mKind.extension))
            AddBundleModules(os::JoinPath(os::JoinPath(folder, u"Contents"), os::GetBundleFolderName()));
        if (!IsNew(folder, mEntered))
            return;
        for (os::DirectoryEntry const& entry : os::ListDirectory(folder)) {
            UString path = os::JoinPath(folder, entry.name);
            if (entry.kind == FileKind::kDirectory && !IsBundle(path, mKind.otherBundles))
                mWaiting.push_back(std::move(path));
            else if (entry.kind == FileKind::kFile && EndsIn(path, mKind.extension))
                mModules.push_back(std::move(path));
        }
    }

    // A name that is nothing but the extension is that of a hidden folder.
    static bool IsBundle(UString const& folder, UString const& extension) {
        vyncore::filesupport::File const name(folder);
        return !extension.empty() && EndsIn(folder, extension) && name.GetTitle() != name.GetName();
    }

    void AddBundleModules(UString const& binaries) {
        if (!IsNew(binaries, mBundlesRead))
            return;
        UString const extension = os::GetBundleModuleExtension();
        for (os::DirectoryEntry const& entry : os::ListDirectory(binaries)) {
            // A file of the format's own extension is one that the walk comes across.
            if (entry.kind == FileKind::kFile && EndsIn(entry.name, extension) && !EndsIn(entry.name, mKind.extension))
                mModules.push_back(os::JoinPath(binaries, entry.name));
        }
    }

    static bool IsNew(UString const& folder, std::set<FileIdentity>& known) {
        std::optional<FileIdentity> const identity = os::GetFileIdentity(folder);
        return identity && known.insert(*identity).second;
    }

    ModuleFileKind const& mKind;
    std::vector<UString> mWaiting;
    std::set<FileIdentity> mEntered;
    std::set<FileIdentity> mBundlesRead;
    std::vector<UString> mModules;
};

} // namespace

bool LiesInBundle(UString const& path, UString const& extension) {
    std::filesystem::path const steps(path);
    return std::any_of(steps.begin(), steps.end(), [&extension](std::filesystem::path const& step) {
        return step != step.stem() && EndsIn(step.u16string(), extension);
    });
}

std::vector<UString> FindModuleFiles(std::vector<UString> const& folders, ModuleFileKind const& kind) {
    Walk walk(kind);
    for (UString const& folder : folders) {
        if (kind.otherBundles.empty() || !LiesInBundle(folder, kind.otherBundles))
            walk.Start(folder);
    }
    return walk.TakeModules();
}

} // namespace vynaudiofilterhost
