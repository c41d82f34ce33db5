#pragma once

#include "vyncore/Export.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/filesupport/ListingIterator.h"
#include "vyncore/strings/UString.h"

namespace vyncore::filesupport {

/// The name of a folder, which need not exist. A value; it holds a path and keeps nothing open.
class VYN_API Dir {
public:
    using FileIterator = ListingIterator<File>;
    using SubdirIterator = ListingIterator<Dir>;

    /// No folder: an empty path.
    /// [any-thread]
    Dir() = default;

    /// [any-thread]
    explicit Dir(UString path);

    /// The folder `child` in `parent`; no folder when the parent is none.
    /// [any-thread]
    Dir(Dir const& parent, UString const& child);

    /// Whether a folder lies there now.
    /// [any-thread]
    bool Exists() const;

    /// The path as it was given.
    /// [any-thread]
    UString const& FullPath() const { return mPath; }

    /// The files that lie directly in this folder, by name, as they are at this call; none when it can't be read.
    /// A link to a file is one. What is neither file nor folder (a pipe, a device) is left out.
    /// [any-thread]
    FileIterator BeginFiles() const;
    FileIterator EndFiles() const { return {}; }

    /// The folders that lie directly in this one, likewise. A link to a folder is one, so a walk that goes into them
    /// must see to it that it ends (os::GetFileIdentity).
    /// [any-thread]
    SubdirIterator BeginSubdirs() const;
    SubdirIterator EndSubdirs() const;

    /// Where programs of all makers share their parts.
    /// [any-thread]
    static Dir CommonFilesDir();

    /// Where programs keep the current user's settings.
    /// [any-thread]
    static Dir PrefDir();

private:
    UString mPath;
};

} // namespace vyncore::filesupport
