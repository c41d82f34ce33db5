#include "vynhost/ConfigCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/CommandError.h"
#include "vynhost/DescriptorRow.h"
#include "vynhost/InputFile.h"
#include "vynhost/JSONText.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"
#include "vynhost/PrivateConfiguration.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"

#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include "os/ChildProcess.h"
#include "os/Clock.h"
#include "os/InterruptDescriptor.h"
#include "os/Memory.h"
#include "os/WaitForDescriptors.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace vynhost {

using vyncore::UString;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;
namespace utility = vynaudiofilterhost::utility;

namespace {

UString FindFolder(std::string const& folder) {
    if (folder.empty())
        return {};
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored))
        throw CommandError::OfFile(folder, "is no folder");
    return MakeWholePath(folder);
}

// A text that the library would take for nothing, and say nothing.
UString ReadConfiguration(std::string const& file) {
    std::string const bytes = ReadInputFile(file, vyncore::proplist::utils::kMostFileBytes);
    vyncore::proplist::PropList list;
    unsigned version = 0;
    if (!vyncore::proplist::utils::ReadPropList(vyncore::UTF8String(bytes), list) ||
        !list.GetValue("version", version) || version != 2)
        throw CommandError::OfFile(file, "is no private plug-in configuration");
    return UTF8to16(bytes);
}

PrivateConfiguration ReadRequested(ConfigRequest const& request) {
    return {ReadConfiguration(request.file), FindFolder(request.vst3Folder), FindFolder(request.vst2Folder)};
}

/// Waits for the child, with its last words for when it fails.
void WaitForBuilder(os::ChildProcess& builder, double timeout, std::string const& file) {
    constexpr std::size_t kMostRead = 1 << 20;
    os::InterruptDescriptor const interrupt;
    std::uint64_t const deadline = os::GetMonotonicNanos() + static_cast<std::uint64_t>(timeout * 1e9);
    std::string words;
    std::optional<os::ProcessEnd> end;
    while (!end) {
        std::vector<std::intptr_t> const descriptors{interrupt.Handle(), builder.GetEndDescriptor(),
                                                     builder.GetDescriptor(os::ChildProcess::Stream::kErrors)};
        os::WaitForDescriptors(descriptors, deadline);
        end = builder.TakeEnd();
        builder.Read(os::ChildProcess::Stream::kErrors, words, kMostRead);
        words.erase(0, words.size() > 1000 ? words.size() - 1000 : 0);
        if (interrupt.WasInterrupted())
            throw CommandError::OfFile(file, "was not built: interrupted");
        if (!end && os::GetMonotonicNanos() >= deadline)
            throw CommandError::OfFile(file, "was not built: the plug-ins did not come to an end within " +
                                                 WriteNumber(timeout) + " seconds");
    }
    if (!end->IsClean())
        throw CommandError::OfFile(file, "was not built: the process that opened the plug-ins " + end->Describe() +
                                             (words.empty() ? "" : "; its last words: " + OnOneLine(words)));
}

void Build(ConfigRequest const& request) {
    if (request.vst3Folder.empty() && request.vst2Folder.empty())
        throw CommandError::WrongUsage("name the folders of the plug-ins with --vst3 and --vst2");
    os::ChildProcess builder(os::GetOwnProgram(), {kConfigBuilderCommand, UTF16to8(MakeWholePath(request.file)),
                                                   "--vst3", UTF16to8(FindFolder(request.vst3Folder)), "--vst2",
                                                   UTF16to8(FindFolder(request.vst2Folder))});
    builder.CloseInput();
    WaitForBuilder(builder, request.timeout, request.file);
}

KnownFilters ListFilters(PrivateConfiguration const& configuration) {
    utility::SetPrivatePluginConfig(configuration.text, configuration.vst3Folder, configuration.vst2Folder);
    vynaudiofilterhost::PluginModuleInfoManager::GetInstance().ClearAll(false);
    return ListKnownFilters();
}

std::string FormatJSON(std::optional<PrivateConfiguration> const& configuration) {
    nlohmann::ordered_json document{{"vst3", nullptr}, {"vst2", nullptr}, {"filters", nlohmann::json::array()}};
    if (!configuration)
        return ToText(document);
    auto const set = [&](char const* key, UString const& folder) {
        if (!folder.empty())
            document[key] = UTF16to8(folder);
    };
    set("vst3", configuration->vst3Folder);
    set("vst2", configuration->vst2Folder);
    for (auto const& filter : ListFilters(*configuration))
        document["filters"].push_back(ToRow(*filter));
    return ToText(document);
}

std::string FormatTable(std::optional<PrivateConfiguration> const& configuration) {
    if (!configuration)
        return "there is no private plug-in configuration\n";
    ColumnTable table({{"name"}, {"vendor"}, {"id"}, {"module"}});
    KnownFilters const filters = ListFilters(*configuration);
    for (auto const& filter : filters)
        table.AddRow({UTF16to8(filter->GetName()), UTF16to8(filter->GetVendorString()), UTF16to8(filter->GetUniqueID()),
                      UTF16to8(filter->GetLocator().GetPath())});
    return filters.empty() ? "the private plug-in configuration holds no plug-ins\n" : table.Finish();
}

} // namespace

std::string RunConfig(ConfigRequest const& request) {
    using Action = ConfigRequest::Action;
    Session const session;
    std::optional<PrivateConfiguration> configuration;
    if (request.action == Action::kBuild)
        Build(request);
    if (request.action == Action::kBuild || request.action == Action::kUse)
        configuration = ReadRequested(request);
    if (request.action == Action::kUse || request.action == Action::kClear) {
        StoredFilesLock const lock;
        SavePrivateConfiguration(configuration);
        if (LoadStoredFiles())
            SaveSettings();
    }
    if (request.action == Action::kShow)
        configuration = ReadPrivateConfiguration();
    return request.json ? FormatJSON(configuration) : FormatTable(configuration);
}

void RunConfigBuilder(ConfigRequest const& request) {
    Session const session;
    LoadUnsupportedPlugins();
    os::LimitOwnMemory(os::GetMachineMemory() / 2);
    try {
        utility::BuildPrivatePluginConfig(MakeWholePath(request.file), UTF8to16(request.vst2Folder),
                                          UTF8to16(request.vst3Folder));
    } catch (std::exception const& error) {
        throw CommandError::OfFile(request.file, error.what());
    }
}

} // namespace vynhost
