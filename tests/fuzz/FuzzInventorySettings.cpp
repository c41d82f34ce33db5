#include "fuzz/FuzzTargets.h"
#include "fuzz/InputFile.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

#include <iterator>

namespace vynfuzz {

using namespace vynaudiofilterhost;

namespace {

// A file may call a filter internal, which no clearing of plug-ins takes out.
void Empty() {
    PluginModuleInfoManager::GetInstance().ClearAll(true);
    auto& catalogue = AudioFilterDescriptorManager::GetInstance();
    while (catalogue.InfoBegin() != catalogue.InfoEnd())
        catalogue.ClearInfosForLocator(PluginLocator((*catalogue.InfoBegin())->GetLocator()));
}

} // namespace

void FuzzInventorySettings(std::uint8_t const* data, std::size_t size) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    Empty();
    inventory.LoadConfiguration(InputFile(data, size));
    auto const locators = inventory.GetPluginLocators();
    auto const infos = std::distance(inventory.PluginInfoBegin(), inventory.PluginInfoEnd());
    Require(static_cast<std::size_t>(infos) == locators.size(), "each module is known once");
    for (PluginLocator const& locator : locators)
        Require(inventory.FindPluginInfo(locator) != nullptr, "what is listed is found");

    vyncore::UTF8String const xml = inventory.GetConfigurationAsXML();
    inventory.AddConfiguration(xml, false);
    Require(inventory.GetConfigurationAsXML() == xml, "what is known changes nothing");
    Empty();
    inventory.LoadConfiguration(InputFile(xml));
    Require(inventory.GetConfigurationAsXML() == xml, "what was loaded survives saving and loading");
    inventory.RemovePluginLocators(locators);
    Require(inventory.GetPluginLocators().empty(), "every module can be taken out");
}

} // namespace vynfuzz
