#include "vynaudiofilterhost/catalogue/DescriptorLookup.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

#include <algorithm>

namespace vynaudiofilterhost {

using vyncore::UString;

boost::intrusive_ptr<AudioFilterDescriptor> FindDescriptorForLooseID(UString const& id) {
    auto const& manager = AudioFilterDescriptorManager::GetInstance();
    for (char16_t const* const prefix : {u"", u"4:", u"2:"}) {
        if (auto const found = manager.GetComponentDescriptorForID(prefix + id))
            return found;
    }
    return nullptr;
}

boost::intrusive_ptr<AudioFilterDescriptor> FindRenamedDescriptor(UString const& id) {
    auto const blank = id.find(u' ');
    if (!id.starts_with(u'2') || blank == UString::npos)
        return nullptr;
    auto const& manager = AudioFilterDescriptorManager::GetInstance();
    auto const found = std::find_if(manager.InfoBegin(), manager.InfoEnd(), [&](auto const& info) {
        // Compared first: few IDs get past their first units.
        return info->GetUniqueID().compare(0, blank + 1, id, 0, blank + 1) == 0;
    });
    return found != manager.InfoEnd() ? *found : nullptr;
}

} // namespace vynaudiofilterhost
