#include "vynhost/KnownFilters.h"

#include "vynhost/CommandError.h"
#include "vynhost/NumberText.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptor;
using vyncore::UString;
using vyncore::string::UpperCase;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;

namespace {

UString WithoutTechnology(UString const& id) {
    std::size_t const colon = id.find(u':');
    return colon == UString::npos ? id : id.substr(colon + 1);
}

template <class Condition>
KnownFilters Select(KnownFilters const& filters, Condition const& condition) {
    KnownFilters selected;
    std::ranges::copy_if(filters, std::back_inserter(selected), [&](auto const& filter) { return condition(*filter); });
    return selected;
}

} // namespace

KnownFilters ListKnownFilters() {
    auto const& catalogue = vynaudiofilterhost::AudioFilterDescriptorManager::GetInstance();
    std::vector<std::tuple<UString, UString, KnownFilters::value_type>> sorted;
    for (auto filter = catalogue.InfoBegin(); filter != catalogue.InfoEnd(); ++filter) {
        if (!(*filter)->IsInternal())
            sorted.emplace_back(UpperCase((*filter)->GetName()), (*filter)->GetUniqueID(), *filter);
    }
    std::ranges::stable_sort(sorted, {},
                             [](auto const& entry) { return std::tie(std::get<0>(entry), std::get<1>(entry)); });
    KnownFilters filters;
    std::ranges::transform(sorted, std::back_inserter(filters), [](auto const& entry) { return std::get<2>(entry); });
    return filters;
}

// Each kind of likeness counts only when there is nothing of the kind before.
KnownFilters FindKnownFilters(std::string const& text) {
    KnownFilters const filters = ListKnownFilters();
    UString const exact = UTF8to16(text);
    UString const folded = UpperCase(UTF8to16(TrimBlanks(text)));
    using Filter = AudioFilterDescriptor;
    KnownFilters found = Select(filters, [&](Filter const& f) { return f.GetUniqueID() == exact; });
    if (found.empty())
        found = Select(filters, [&](Filter const& f) {
            UString const id = UpperCase(f.GetUniqueID());
            return id == folded || WithoutTechnology(id) == folded;
        });
    if (found.empty())
        found = Select(filters, [&](Filter const& f) { return f.GetName() == exact; });
    if (found.empty())
        found = Select(filters, [&](Filter const& f) { return UpperCase(f.GetName()) == folded; });
    return found;
}

std::string TellFilters(KnownFilters const& filters) {
    constexpr std::size_t kMostListed = 20;
    std::string list;
    for (std::size_t i = 0; i < std::min(filters.size(), kMostListed); ++i)
        list += (i == 0 ? "" : ", ") + std::string("\"") + UTF16to8(filters[i]->GetName()) + "\" " +
                UTF16to8(filters[i]->GetUniqueID()) + " (" + UTF16to8(filters[i]->GetLocator().GetPath()) + ")";
    return filters.size() > kMostListed ? list + " and " + std::to_string(filters.size() - kMostListed) + " more"
                                        : list;
}

void ThrowAmbiguous(std::string const& text, KnownFilters const& filters) {
    throw CommandError(ExitStatus::kWrongUsage, CommandError::Subject::kPlugin, text,
                       "is the name of several plug-ins, choose one by its ID: " + TellFilters(filters));
}

bool IsEnabled(AudioFilterDescriptor const& filter) {
    auto const& inventory = vynaudiofilterhost::PluginModuleInfoManager::GetInstance();
    return filter.IsEnabled() && inventory.IsPluginEnabled(filter.GetLocator(), false);
}

} // namespace vynhost
