#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/HashSlots.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstddef>
#include <functional>
#include <string_view>

namespace vynaudiofilterhost {

/// [main-thread]
inline std::size_t HashOfID(vyncore::UString const& id) {
    return std::hash<std::u16string_view>()(id);
}

/// Descriptors by their unique IDs, one for each. These stay as they are while the descriptors are in.
class DescriptorMap {
public:
    using Pointer = boost::intrusive_ptr<AudioFilterDescriptor>;

    /// Unless there is one of that ID.
    /// [main-thread]
    void Add(Pointer const& info) {
        if (!Find(info->GetUniqueID()))
            mInfos.Add(HashOfID(info->GetUniqueID()), info);
    }
    /// In the place of the one of that ID, if there is one.
    /// [main-thread]
    void Set(Pointer const& info) {
        Remove(info->GetUniqueID());
        Add(info);
    }
    /// [main-thread]
    void Remove(vyncore::UString const& id) { mInfos.Remove(HashOfID(id), HasID{id}); }

    /// Null when there is none.
    /// [main-thread]
    Pointer Find(vyncore::UString const& id) const {
        Pointer const* const found = mInfos.Find(HashOfID(id), HasID{id});
        return found ? *found : nullptr;
    }
    /// [main-thread]
    std::size_t GetSize() const noexcept { return mInfos.GetSize(); }

private:
    struct HasID {
        vyncore::UString const& id;
        bool operator()(Pointer const& info) const { return info->GetUniqueID() == id; }
    };

    HashSlots<Pointer> mInfos;
};

} // namespace vynaudiofilterhost
