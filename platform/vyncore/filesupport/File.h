#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vyncore::filesupport {

class Dir;

/// The name of a file, which need not exist. A value; it holds a path and keeps nothing open.
class VYN_API File {
public:
    /// No file: an empty path.
    /// [any-thread]
    File() = default;

    /// [any-thread]
    explicit File(UString path);

    /// The file `name` in that folder; no file when the folder is none.
    /// [any-thread]
    File(Dir const& folder, UString const& name);

    /// Whether a file lies there now. A folder is none.
    /// [any-thread]
    bool Exists() const;

    /// The path as it was given.
    /// [any-thread]
    UString const& FullPath() const { return mPath; }

    /// The path's last part; empty when it ends in a separator.
    /// [any-thread]
    UString GetName() const;

    /// The name without its last extension: "x.vst3" is titled "x", "a.b.so" "a.b", ".hidden" ".hidden".
    /// [any-thread]
    UString GetTitle() const;

private:
    UString mPath;
};

} // namespace vyncore::filesupport
