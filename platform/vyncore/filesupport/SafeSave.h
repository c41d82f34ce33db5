#pragma once

#include "vyncore/Export.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include <memory>
#include <string>

namespace os {
class ReplacementFile;
}

namespace vyncore::filesupport {

/// Saves a file so that a crash or a lost current, at any point, leaves the old content or the new one, whole: it is
/// written under another name in the same folder and takes the file's place when it is complete. A link is followed,
/// one that leads to nothing yet as well. Owned by whoever saves; never shared by threads.
///
/// Life: made; the owner writes the temporary file; Commit, if all was written. The end of the object without Commit
/// removes the temporary file and leaves the old one.
class VYN_API SafeSave {
public:
    /// Throws file_delete_exception when something lies at `file` that can't be replaced: a folder, a pipe, a file that
    /// may not be written.
    /// [any-thread]
    explicit SafeSave(File const& file);
    SafeSave(SafeSave const&) = delete;
    SafeSave& operator=(SafeSave const&) = delete;
    /// [any-thread]
    ~SafeSave();

    /// Writes behind what was written so far. False when not all of it could be (a full disk), and when there can be no
    /// temporary file, for want of the folder for example.
    /// [any-thread]
    bool Write(UTF8String const& bytes);

    /// The same file, to be opened and not to be replaced by another, for whoever writes by name. No file (an empty
    /// path) when there can be none, and when it lies where no text leads, behind a link into a folder whose name is no
    /// UTF-8.
    /// [any-thread]
    File GetTempFile() const;

    /// Brings the temporary file to the disk and puts it in the file's place. Throws file_delete_exception when that
    /// fails, as without a temporary file; the old one is as it was then. To be called once.
    /// [any-thread]
    void Commit();

private:
    std::unique_ptr<os::ReplacementFile> mReplacement; ///< null when there can be none
    std::string mObstacle;                             ///< why
};

} // namespace vyncore::filesupport
