#include "fuzz/FuzzTargets.h"
#include "fuzz/InputFile.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"

#include <vector>

namespace vynfuzz {

using namespace vynaudiofilterhost;

void FuzzBanList(std::uint8_t const* data, std::size_t size) {
    auto& bans = BannedPluginManager::GetInstance();
    PluginLocator const former(kTechnologyVST3, u"/former");
    bans.AddBannedPlugin(former);
    auto file = InputFile(data, size);
    bans.LoadConfiguration(file);
    std::vector<PluginLocator> const banned(bans.BannedBegin(), bans.BannedEnd());
    for (PluginLocator const& locator : banned)
        Require(bans.IsPluginBanned(locator), "what is listed is banned");
    if (banned == std::vector<PluginLocator>{former})
        return;
    bans.SaveConfiguration(file);
    for (PluginLocator const& locator : banned)
        bans.RemoveBannedPlugin(locator);
    Require(bans.BannedBegin() == bans.BannedEnd(), "everything can be taken off the list");
    bans.LoadConfiguration(file);
    Require(std::vector<PluginLocator>(bans.BannedBegin(), bans.BannedEnd()) == banned,
            "what was loaded survives saving and loading");
    for (PluginLocator const& locator : banned)
        bans.RemoveBannedPlugin(locator);
}

} // namespace vynfuzz
