#pragma once

#include "vynaudiofilterhost/inventory/TechnologyType.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vynaudiofilterhost {

/// The identity of a plug-in module: its technology and the full path of its file. A plain value, the key of a module
/// in the inventory, in the ban lists and in every descriptor. It never looks whether the file exists.
///
/// Its text form is the technology as a decimal number, a colon, and the path: "3:/usr/lib/vst3/a.vst3".
/// Paths compare as the file system compares file names.
class VYN_API PluginLocator {
public:
    /// No technology and no path.
    /// [any-thread]
    PluginLocator() = default;

    /// [any-thread]
    PluginLocator(TechnologyType technology, vyncore::UString const& path);

    /// [any-thread]
    void Swap(PluginLocator& other) noexcept;

    /// [any-thread]
    TechnologyType GetTechnologyType() const noexcept { return mTechnology; }

    /// [any-thread]
    vyncore::UString GetPath() const { return mPath; }

    /// The text form. FromString reads it back exactly for every technology that isn't negative.
    /// [any-thread]
    vyncore::UString ToString() const;

    /// Becomes what the text says. Only the first colon divides. A text without one gives the default locator; what
    /// stands before the colon and is no number gives technology 0 with the path behind it.
    /// [any-thread]
    void FromString(vyncore::UString const& text);

    /// True when technology and file are the same.
    /// [any-thread]
    bool operator==(PluginLocator const& other) const;

    /// Orders by technology, then by path.
    /// [any-thread]
    bool operator<(PluginLocator const& other) const;

private:
    TechnologyType mTechnology = kTechnologyNone;
    vyncore::UString mPath;
};

} // namespace vynaudiofilterhost
