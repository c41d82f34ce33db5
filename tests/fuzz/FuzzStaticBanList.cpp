#include "fuzz/FuzzTargets.h"
#include "fuzz/InputFile.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/UnsupportedVSTParseHandler.h"
#include "vyncore/xml/Parser.h"

namespace vynfuzz {

using namespace vynaudiofilterhost;

void FuzzStaticBanList(std::uint8_t const* data, std::size_t size) {
    auto& bans = BannedPluginManager::GetInstance();
    auto former = InputFile("<plugin filename='former'/>");
    Require(bans.LoadStaticConfiguration(former), "a list can be read");
    auto file = InputFile(data, size);
    std::vector<UnsupportedPlugin> plugins;
    UnsupportedVSTParseHandler handler(plugins);
    bool const parsed = vyncore::xml::GetParser(handler).Parse(file.FullPath()) == 0;
    Require(bans.LoadStaticConfiguration(file) == parsed, "a list is read whole or not at all");
    Require(parsed || (plugins.empty() && bans.IsPluginBannedStatically(u"FORMER", u"", u"")),
            "a failure changes nothing");
    for (auto const& [fileName, uniqueID, version] : plugins)
        Require(bans.IsPluginBannedStatically(fileName, uniqueID, version), "what is listed is banned");
}

} // namespace vynfuzz
