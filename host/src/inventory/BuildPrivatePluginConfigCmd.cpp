#include "vynaudiofilterhost/inventory/BuildPrivatePluginConfigCmd.h"

#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"
#include "vyncore/console/CommandRegistry.h"

#include <memory>

namespace vynaudiofilterhost::console {

using vyncore::UString;
using vyncore::UTF8String;

namespace {

constexpr char const* kName = "vynaudiofilterhost.BuildPrivatePluginConfig";
constexpr char const* kDescription = "vynaudiofilterhost.BuildPrivatePluginConfig - Build the private plug-in "
                                     "configuration used by vynaudiofilterhost.";
constexpr char16_t const* kUsage = u"vynaudiofilterhost.BuildPrivatePluginConfig <path of result file>,"
                                   u"<VST3 directory>,[VST2 directory]\n";

} // namespace

bool BuildPrivatePluginConfigCmd::Execute(std::vector<UString> const& args, UString& output) {
    if (args.size() != 2 && args.size() != 3) {
        output += kUsage;
        return false;
    }
    UString const& vst3Directory = args[1];
    UString const vst2Directory = args.size() == 3 ? args[2] : UString();
    utility::BuildPrivatePluginConfig(args[0], vst2Directory, vst3Directory);
    output += u"Done.\n";
    return true;
}

void BuildPrivatePluginConfigCmd::Register() {
    auto const make = [](UTF8String const& name, UTF8String const& help) {
        return std::make_unique<BuildPrivatePluginConfigCmd>(name, help);
    };
    vyncore::console::CommandRegistry::Get().RegisterCommand(kName, kDescription, make);
}

void BuildPrivatePluginConfigCmd::Unregister() {
    vyncore::console::CommandRegistry::Get().UnregisterCommand(kName);
}

} // namespace vynaudiofilterhost::console
