#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/catalogue/CatalogueLists.h"
#include "vynaudiofilterhost/catalogue/DescriptorMap.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// The catalogue of all filters that are known, internal ones and those of plug-ins: one per process, made on first
/// use. It says which filters a user may be offered and which descriptor a unique ID stands for, and it stores the
/// plug-ins' descriptors and reads them back. It never loads or creates a filter.
///
/// 1. A descriptor that equals one in the catalogue is not taken in.
/// 2. A unique ID leads to the first descriptor that came with it. A later one that differs stands beside it, so a
///    module that has changed is cleared (ClearInfosForLocator) before its new descriptors are added.
/// 3. Instruments are kept from the offered ones while they are disabled. Clearing shows them all.
/// 4. A descriptor lives on while anyone holds it. While it is in the catalogue its unique ID and locator stay as they
///    are; its flags may change.
///
/// What it costs to find, add or clear depends little on how many there are.
class VYN_API AudioFilterDescriptorManager {
public:
    using InfoPointer = boost::intrusive_ptr<AudioFilterDescriptor>;
    using InfoIterator = std::vector<InfoPointer>::const_iterator;

    /// [main-thread]
    static AudioFilterDescriptorManager& GetInstance();

    AudioFilterDescriptorManager(AudioFilterDescriptorManager const&) = delete;
    AudioFilterDescriptorManager& operator=(AudioFilterDescriptorManager const&) = delete;

    /// Adds the descriptor behind all others; one that is there already moves to the end. Null is ignored.
    /// [main-thread]
    void AddAudioFilterDescriptor(InfoPointer descriptor);

    /// The descriptors to offer, in the order of their adding. The iterators hold until the catalogue changes.
    /// [main-thread]
    InfoIterator InfoBegin() const;
    InfoIterator InfoEnd() const;

    /// The descriptor of exactly that ID, offered or not; null when there is none. A legacy ID is replaced by its
    /// current one first, whether or not a descriptor bears it.
    /// [main-thread]
    InfoPointer GetComponentDescriptorForID(vyncore::UString const& id) const;

    /// Makes an ID of former times stand for the current one. The first mapping of a legacy ID stays.
    /// [main-thread]
    void AddLegacyToCurrentIDMapping(vyncore::UString const& legacyID, vyncore::UString const& currentID);
    /// The current ID of a legacy one; any other ID itself.
    /// [main-thread]
    vyncore::UString GetCurrentID(vyncore::UString const& id) const;
    /// Appends the legacy IDs of a current one, in the order of their UTF-16 units. Whether the vector holds anything
    /// then.
    /// [main-thread]
    bool GetLegacyIDs(vyncore::UString const& currentID, std::vector<vyncore::UString>& legacyIDs) const;

    /// Takes out the descriptors of plug-ins. All others are offered from then on.
    /// [main-thread]
    void ClearExternalInfos();
    /// Takes out the descriptors of a module. All others are offered from then on. Whether the number of IDs with a
    /// descriptor is another one since.
    /// [main-thread]
    bool ClearInfosForLocator(PluginLocator const& locator);

    /// Takes in stored descriptors of plug-ins whose IDs are not in the catalogue.
    /// @param merge  false: takes out those of plug-ins that are there, also when the list holds none
    /// [main-thread]
    void ReadExternalComponentDescriptors(vyncore::proplist::PropList const& list, bool merge);
    /// Stores the descriptors of plug-ins, offered or not, in the order of their adding.
    /// [main-thread]
    void WriteExternalComponentDescriptors(vyncore::proplist::PropList& list) const;

    /// Whether instruments that are added from now on are offered; false at first.
    /// [main-thread]
    void SetSynthsEnabled(bool enabled) noexcept { mSynthsEnabled = enabled; }
    /// [main-thread]
    bool AreSynthsEnabled() const noexcept { return mSynthsEnabled; }

private:
    using Infos = CatalogueLists::Infos;
    using LegacyIDMap = std::map<vyncore::UString, vyncore::UString, std::less<vyncore::UString>,
                                 vyncore::allocator::STLAllocator<std::pair<vyncore::UString const, vyncore::UString>>>;

    AudioFilterDescriptorManager();
    ~AudioFilterDescriptorManager();

    void DoAddAudioFilterDescriptor(InfoPointer const& descriptor);
    void RemoveAudioFilterDescriptor(InfoPointer const& descriptor);
    Infos GetInternalInfos() const;
    Infos GetExternalInfos() const;
    static DescriptorMap BuildComponentDescriptorMap(Infos const& infos);
    void LeadToFirst(vyncore::UString const& id);

    CatalogueLists mInfos;
    DescriptorMap mIDMap;
    std::set<vyncore::UString> mStrayIDs; ///< those that mIDMap leads to none of their descriptors or not to the first
    LegacyIDMap mLegacyIDMap;
    bool mSynthsEnabled = false;
};

} // namespace vynaudiofilterhost
