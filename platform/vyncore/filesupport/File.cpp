#include "vyncore/filesupport/File.h"

#include "os/FileSystem.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/StdPath.h"

#include <utility>

namespace vyncore::filesupport {

File::File(UString path) : mPath(std::move(path)) {}

File::File(Dir const& folder, UString const& name) : mPath(os::JoinPath(folder.FullPath(), name)) {}

bool File::Exists() const {
    return os::GetFileKind(mPath) == os::FileKind::kFile;
}

UString File::GetName() const {
    return FromStdPath(ToStdPath(mPath).filename());
}

UString File::GetTitle() const {
    return FromStdPath(ToStdPath(mPath).stem());
}

} // namespace vyncore::filesupport
