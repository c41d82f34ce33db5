#pragma once

#include "vyncore/strings/UString.h"

#include <functional>
#include <string>
#include <string_view>

namespace os {

/// A file that is written under another name in the folder of the one that it is to replace, and takes its place whole
/// or not at all: whoever looks finds the old file or the new one. Whoever makes the object owns it. It touches nothing
/// of the process besides: a process that is ended leaves the file behind, unless its program sees to that with
/// FileRemovalOnSignals.
///
/// Life: made; the owner writes, with Write, through the descriptor or under the temporary name; Commit puts it in
/// place. Without that, the end of the object removes it. There may be any number of objects, for one target too; the
/// last Commit counts.
class ReplacementFile {
public:
    /// Told the temporary file's path before the file is made, once per name that is tried.
    using NameObserver = std::function<void(std::string const& temporary)>;

    /// @param target  a path in the system's own encoding; a link is followed, one that leads to nothing yet as well. A
    ///                file that is there already must be an ordinary one that may be written; its rights stay, and its
    ///                owner where the system allows.
    /// Throws std::runtime_error, with one line without the path, when there can't be such a file.
    /// [any-thread]
    explicit ReplacementFile(std::string const& target, NameObserver const& observer = {});

    /// Likewise for a path as the library takes them.
    /// [any-thread]
    explicit ReplacementFile(vyncore::UString const& target);

    ReplacementFile(ReplacementFile const&) = delete;
    ReplacementFile& operator=(ReplacementFile const&) = delete;
    /// [any-thread]
    ~ReplacementFile();

    /// Removes what objects in a folder have left behind whose processes were ended; those at work stay.
    /// [any-thread]
    static void RemoveAbandoned(vyncore::UString const& folder);

    /// Open for reading and writing, empty, owned by the object. Not to be closed by others.
    /// [any-thread]
    int GetDescriptor() const noexcept { return mDescriptor; }

    /// Writes behind what was written so far. False when not all of it could be, as on a full disk.
    /// [any-thread]
    bool Write(std::string_view bytes);

    /// Where the file lies until Commit. What is written there must go into this file, not into another of its name.
    /// Empty when the path is no Unicode text: whoever followed it would reach another file.
    /// [any-thread]
    vyncore::UString GetTemporaryPath() const;

    /// Brings everything to the disk and puts the file in its place. Throws std::runtime_error when that fails; then
    /// the target is as it was. To be called once.
    /// [any-thread]
    void Commit();

private:
    std::string mTarget;
    std::string mTemporary; ///< empty once there is no such file
    int mDescriptor = -1;
};

} // namespace os
