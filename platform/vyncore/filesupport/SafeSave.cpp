#include "vyncore/filesupport/SafeSave.h"

#include "os/FileSystem.h"
#include "os/ReplacementFile.h"
#include "vyncore/filesupport/FileDeleteException.h"

#include <stdexcept>

namespace vyncore::filesupport {

SafeSave::SafeSave(File const& file) {
    try {
        mReplacement = std::make_unique<os::ReplacementFile>(file.FullPath());
    } catch (std::runtime_error const& error) {
        if (os::GetFileKind(file.FullPath()) != os::FileKind::kNone)
            throw file_delete_exception(error.what());
        mObstacle = error.what();
    }
}

SafeSave::~SafeSave() = default;

bool SafeSave::Write(UTF8String const& bytes) {
    return mReplacement && mReplacement->Write(bytes);
}

File SafeSave::GetTempFile() const {
    return mReplacement ? File(mReplacement->GetTemporaryPath()) : File();
}

void SafeSave::Commit() {
    if (!mReplacement)
        throw file_delete_exception(mObstacle);
    try {
        mReplacement->Commit();
    } catch (std::runtime_error const& error) {
        throw file_delete_exception(error.what());
    }
}

} // namespace vyncore::filesupport
