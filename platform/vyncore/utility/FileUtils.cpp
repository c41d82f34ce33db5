#include "vyncore/utility/FileUtils.h"

#include "os/FileSystem.h"
#include "vyncore/filesupport/StdPath.h"

#include <algorithm>
#include <fstream>

namespace vyncore::utility::FileUtils {

bool FileExists(UString const& path) {
    if (os::GetFileKind(path) == os::FileKind::kFile)
        return true;
    UString withSlashes = path;
    std::replace(withSlashes.begin(), withSlashes.end(), u'\\', u'/');
    return withSlashes != path && os::GetFileKind(withSlashes) == os::FileKind::kFile;
}

bool SimpleWriteStringToFile(UString const& path, UTF8String const& text) {
    // A zero would cut the path short, and opening a pipe waits for its reader.
    bool const namesFile = path.find(u'\0') == UString::npos;
    os::FileKind const kind = os::GetFileKind(path);
    if (!namesFile || (kind != os::FileKind::kNone && kind != os::FileKind::kFile))
        return false;
    std::ofstream file(filesupport::ToStdPath(path), std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    return file.good();
}

} // namespace vyncore::utility::FileUtils
