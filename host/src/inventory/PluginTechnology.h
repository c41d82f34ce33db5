#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vyncore/Export.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/function.hpp>
#include <boost/signals2/signal.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost {

/// A plug-in format as the inventory sees it: the folders that the user chose for it, and four functions that know the
/// format. Made by the format when the library is loaded, held through boost::intrusive_ptr by the
/// PluginModuleInfoManager until the library goes. It never looks into a module itself.
///
/// Folders are kept in the order of adding and told apart exactly, unit by unit: "/a" and "/a/" are two.
/// A slot of the signal runs inside the operation that fires it; what the slot is given stays as it is whatever it
/// does.
class VYN_API PluginTechnology : public vyncore::utility::RefCountedObject {
public:
    using Directories = std::vector<vyncore::UString>;
    /// Lists the modules in a folder and all below it, but for the banned ones (BannedPluginManager::IsPluginBanned).
    using CollectFunction = boost::function<std::vector<PluginLocator>(vyncore::filesupport::Dir const&)>;
    /// Makes a context for one scan.
    using ScanContextFunction =
        boost::function<boost::intrusive_ptr<PluginScanContext>(std::vector<vyncore::filesupport::Dir> const&)>;
    /// Names the folders that the format usually lies in.
    using DefaultDirectoriesFunction = boost::function<Directories()>;
    /// Turns a module's path into what a user is shown.
    using PathDisplayFunction = boost::function<vyncore::UString(vyncore::UString const&)>;
    /// The technology, the folders added, the folders removed.
    using DirectoriesChangedSignal = boost::signals2::signal<void(
        boost::intrusive_ptr<PluginTechnology>, Directories const& added, Directories const& removed)>;

    /// Without folders at first. Each function may be empty.
    /// @param usesDirectories  whether the format looks for modules in the user's folders, and not where it chooses
    /// [main-thread]
    PluginTechnology(TechnologyType type, CollectFunction const& collect, ScanContextFunction const& scanContext,
                     DefaultDirectoriesFunction const& defaultDirectories, PathDisplayFunction const& pathDisplay,
                     bool usesDirectories);

    PluginTechnology(PluginTechnology const&) = delete;
    PluginTechnology& operator=(PluginTechnology const&) = delete;
    /// [main-thread]
    ~PluginTechnology() override;

    /// [any-thread]
    TechnologyType GetType() const noexcept { return mType; }

    /// Whether the format looks for modules in the user's folders.
    /// [any-thread]
    bool UsesDirectories() const noexcept { return mUsesDirectories; }

    /// The folders, in order. The iterators hold until the folders change.
    /// [main-thread]
    Directories::const_iterator DirectoryBegin() const noexcept { return mDirectories.begin(); }
    Directories::const_iterator DirectoryEnd() const noexcept { return mDirectories.end(); }

    /// Appends those that are not there yet; one that stands in the list twice is appended twice. If there was any,
    /// fires the signal with the whole list as added.
    /// [main-thread]
    void AddPluginDirectories(Directories const& directories);

    /// Takes out the first of each. If there was any, fires the signal with the whole list as removed.
    /// [main-thread]
    void RemovePluginDirectories(Directories const& directories);

    /// Takes out all. If there was any, fires the signal.
    /// [main-thread]
    void RemoveAllPluginDirectories();

    /// Fires the signal with the present folders, which may be none, as removed while they are still there. Then, for a
    /// format that uses folders and can name its own, makes them those and fires the signal with them as added.
    /// [main-thread]
    void ResetDirectoriesToDefault();

    /// The modules in all folders, in order; for a format that uses none, what it finds by itself. A module that is
    /// reached through two folders is there twice. Empty without a function for it.
    /// [main-thread]
    std::vector<PluginLocator> CollectPlugins() const;

    /// A context for one scan, which is told the folders. Throws boost::bad_function_call when there is no function for
    /// it; null when that makes none.
    /// [main-thread]
    boost::intrusive_ptr<PluginScanContext> CreateScanContext() const;

    /// What a user is shown for a module's path: the path itself when the format has no word on it.
    /// [main-thread]
    vyncore::UString GetPathDisplayString(vyncore::UString const& path) const;

    /// [main-thread]
    DirectoriesChangedSignal& GetDirectoriesChangedSignal() noexcept { return mDirectoriesChanged; }

private:
    std::vector<vyncore::filesupport::Dir> MakeDirs() const;
    void Announce(Directories added, Directories removed);

    TechnologyType mType;
    DirectoriesChangedSignal mDirectoriesChanged;
    CollectFunction mCollect;
    ScanContextFunction mScanContext;
    DefaultDirectoriesFunction mDefaultDirectories;
    PathDisplayFunction mPathDisplay;
    bool mUsesDirectories;
    Directories mDirectories;
};

} // namespace vynaudiofilterhost
