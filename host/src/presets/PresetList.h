#pragma once

#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/signals2/signal.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <set>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// A view on a property list whose sub-lists are presets, each under its name. Held through boost::intrusive_ptr. The
/// application owns the list and keeps it alive, where it is, for as long as the view lives, and a preset in it for as
/// long as a view on that preset does.
///
/// It holds no state of its own but its signal: two views on one list see each other's changes, and each announces its
/// own. What is changed inside a preset is announced by the view on that preset alone.
class VYN_API PresetList : public vyncore::utility::RefCountedObject {
public:
    using PropList = vyncore::proplist::PropList;
    using PresetListChangedSignal = boost::signals2::signal<void(PresetList const&)>;

    /// [main-thread]
    explicit PresetList(PropList& list);
    PresetList(PresetList const&) = delete;
    PresetList& operator=(PresetList const&) = delete;
    ~PresetList() override;

    /// Adds an empty preset and announces it. Null when there is one of this name, which stays as it is.
    /// [main-thread]
    boost::intrusive_ptr<PresetData> AppendPreset(vyncore::UString const& name);

    /// A new view on the preset of this name; null when there is none.
    /// [main-thread]
    boost::intrusive_ptr<PresetData> GetPreset(vyncore::UString const& name) const;

    /// Replaces what `names` held by the names of all presets.
    /// [main-thread]
    void GetPresetNames(std::set<vyncore::UString>& names) const;

    /// Removes the preset of this name, or whatever else lies there; announced also when there was none.
    /// [main-thread]
    void RemovePreset(vyncore::UString const& name);

    /// Removes everything, and announces it.
    /// [main-thread]
    void Clear();

    /// Fires with this list when the operations of this view say so.
    /// [main-thread]
    PresetListChangedSignal& GetPresetListChangedSignal() noexcept { return mPresetListChanged; }

private:
    PropList* const mList;
    PresetListChangedSignal mPresetListChanged;
};

} // namespace vynaudiofilterhost
