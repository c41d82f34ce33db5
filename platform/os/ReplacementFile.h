#pragma once

#include <string>

namespace os {

/// A file that is written under another name in the folder of the one that it is to replace, and takes its place whole
/// or not at all: whoever looks finds the old file or the new one. Whoever makes the object owns it.
///
/// Life: made; the owner writes through the descriptor; Commit puts it in place. Without that, the end of the object
/// removes it, and so does a signal that ends the process. At most one object at a time.
class ReplacementFile {
public:
    /// @param target  a path in the system's own encoding; a link is followed. A file that is there already must be
    ///                an ordinary one that may be written.
    /// Throws std::runtime_error, with one line without the path, when there can't be such a file.
    /// [main-thread]
    explicit ReplacementFile(std::string const& target);
    ReplacementFile(ReplacementFile const&) = delete;
    ReplacementFile& operator=(ReplacementFile const&) = delete;
    /// [main-thread]
    ~ReplacementFile();

    /// Open for reading and writing, empty, owned by the object. Not to be closed by others.
    /// [main-thread]
    int GetDescriptor() const noexcept { return mDescriptor; }

    /// Brings everything to the disk and puts the file in its place. Throws std::runtime_error when that fails; then
    /// the target is as it was. To be called once.
    /// [main-thread]
    void Commit();

private:
    std::string mTarget;
    std::string mTemporary; ///< empty once there is no such file
    int mDescriptor = -1;
};

} // namespace os
