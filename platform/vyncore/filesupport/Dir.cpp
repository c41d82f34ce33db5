#include "vyncore/filesupport/Dir.h"

#include "os/FileSystem.h"
#include "os/SpecialFolders.h"

#include <utility>

namespace vyncore::filesupport {

namespace {

template <class T>
ListingIterator<T> List(UString const& folder, os::FileKind kind) {
    std::vector<T> found;
    for (os::DirectoryEntry const& entry : os::ListDirectory(folder)) {
        if (entry.kind == kind)
            found.emplace_back(os::JoinPath(folder, entry.name));
    }
    return ListingIterator<T>(std::move(found));
}

} // namespace

Dir::Dir(UString path) : mPath(std::move(path)) {}

Dir::Dir(Dir const& parent, UString const& child) : mPath(os::JoinPath(parent.mPath, child)) {}

bool Dir::Exists() const {
    return os::GetFileKind(mPath) == os::FileKind::kDirectory;
}

Dir::FileIterator Dir::BeginFiles() const {
    return List<File>(mPath, os::FileKind::kFile);
}

Dir::SubdirIterator Dir::BeginSubdirs() const {
    return List<Dir>(mPath, os::FileKind::kDirectory);
}

Dir::SubdirIterator Dir::EndSubdirs() const {
    return {};
}

Dir Dir::CommonFilesDir() {
    return Dir(os::GetCommonFilesFolder());
}

Dir Dir::PrefDir() {
    return Dir(os::GetPreferencesFolder());
}

} // namespace vyncore::filesupport
