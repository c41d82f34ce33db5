#include "vynhost/ScriptApplication.h"

#include "vynhost/CatalogueEntryObject.h"
#include "vynhost/CommandError.h"
#include "vynhost/NameLookup.h"
#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"
#include "vynhost/ParamsReport.h"
#include "vynhost/PluginCall.h"
#include "vynhost/RenderReportObject.h"
#include "vynhost/ScriptHost.h"
#include "vynhost/ScriptItems.h"
#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/scripting/AudioFilterObject.h"
#include "vyncore/strings/StringUtils.h"
#include "vynmediatypes/scripting/AudioBusDescriptionObject.h"

#include <stdexcept>
#include <string>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;
using vynmediatypes::AudioBusDescription;
using vynscripting::ScriptObjectPtr;

namespace {

ScriptItems<ScriptApplication>::Registrar const kRegistrar(&ScriptItems<ScriptApplication>::Enter);

// A script's error tells its subject in its text.
template <class Work>
decltype(auto) Tell(Work const& work) {
    try {
        return work();
    } catch (CommandError const& error) {
        if (error.GetSubject() == CommandError::Subject::kNone)
            throw;
        throw std::runtime_error(error.GetName().empty() ? error.what()
                                                         : OnOneLine(error.GetName()) + ": " + error.what());
    }
}

template <class Ask>
decltype(auto) AskFilter(ScriptHost const& host, Ask const& ask) {
    auto const& filter = host.GetFilter();
    if (!filter)
        throw std::runtime_error("no plug-in is open");
    return CallPlugin(ExitStatus::kWorkFailed, {}, [&] { return ask(*filter); });
}

std::vector<std::string> ReadNames(AudioFilter& filter) {
    std::vector<std::string> names;
    int const count = filter.GetParameterCount();
    for (int index = 0; index < count; ++index) {
        auto const info = filter.GetParameterInfo(index);
        names.push_back(info ? UTF16to8(info->GetName()) : std::string());
    }
    return names;
}

bool Has(AudioFilter const& filter, int index) {
    return index >= 0 && index < filter.GetParameterCount();
}

AudioBusDescription::Type TypeOfName(std::string const& name) {
    if (name == "main")
        return AudioBusDescription::kTypeMain;
    if (name == "sidechain")
        return AudioBusDescription::kTypeSideChain;
    throw std::runtime_error("there is no type of bus \"" + name + "\"; there are main, sidechain");
}

} // namespace

ScriptApplication::ScriptApplication() : ScriptObject(GetClassname()) {}

void ScriptApplication::DefineObject() {
    using Self = ScriptApplication;
    ScriptItems<Self> items;
    items.Property("filter", "The plug-in that is open: always the same AudioFilter. Without one its items throw.",
                   &Self::GetFilterObject);
    items.Property("args", "What stands behind -- on the command line.", &Self::GetArguments);
    items.Property("catalogue", "The plug-ins that are known: a CatalogueEntry each.", &Self::GetCatalogue);
    items.Method("open", {"plugin"},
                 "Opens a plug-in, by its unique ID, its name or the path of its module, in place of the one that is "
                 "open; that one stays open when this fails.",
                 &Self::Open);
    items.Method("close", {}, "Lets the plug-in go.", &Self::Close);
    items.Method("render", {"inPath", "outPath"},
                 "Sends an audio file through the plug-in as it is now, into a WAV file; gives a RenderReport.",
                 &Self::Render);
    items.Method("createBus", {"type", "layout"},
                 "Makes an AudioBusDescription, for requestBusConfiguration: of type \"main\" or \"sidechain\", of "
                 "layout \"mono\", \"stereo\", \"5.1\" or \"7.1\".",
                 &Self::CreateBus);
    items.Method("parameterName", {"index"}, "The name of a parameter; empty when there is none at <index>.",
                 &Self::GetParameterName);
    items.Method("findParameter", {"name"}, "The index of the first parameter of that name; -1 when there is none.",
                 &Self::FindParameter);
    items.Method("parameterText", {"index"},
                 "The value of a parameter in words, with its unit; empty when there is none at <index>.",
                 &Self::GetParameterText);
}

void ScriptApplication::Enter(vynscripting::ScriptEngine& engine, ScriptHost& host) {
    engine.SetGlobalItems(MakeScriptObject<ScriptApplication>(
        engine.GetContextHdl(), [&](ScriptApplication& application) { application.Initialize(host); }));
}

void ScriptApplication::Initialize(ScriptHost& host) {
    using vynaudiofilterhost::AudioFilterObject;
    mHost = &host;
    mFilter = MakeScriptObject<AudioFilterObject>(GetContextHdl(), [&host](AudioFilterObject& filter) {
        filter.Initialize([&host] { return host.GetFilter(); });
    });
}

ScriptHost& ScriptApplication::GetHost() const {
    if (!mHost)
        throw vynscripting::ParameterErrorException();
    return *mHost;
}

ScriptObjectPtr ScriptApplication::GetFilterObject() {
    return mFilter;
}

std::vector<vyncore::UString> ScriptApplication::GetArguments() const {
    std::vector<UString> arguments;
    for (std::string const& argument : GetHost().GetArguments())
        arguments.push_back(UTF8to16(argument));
    return arguments;
}

ScriptApplication::Objects ScriptApplication::GetCatalogue() {
    KnownFilters const& filters = Tell([&]() -> KnownFilters const& { return GetHost().GetCatalogue(); });
    if (mCatalogue.empty()) {
        for (auto const& filter : filters)
            mCatalogue.push_back(MakeScriptObject<CatalogueEntryObject>(
                GetContextHdl(), [&](CatalogueEntryObject& entry) { entry.Initialize(filter); }));
    }
    return mCatalogue;
}

void ScriptApplication::Open(UString const& plugin) {
    Tell([&] { GetHost().Open(UTF16to8(plugin)); });
}

void ScriptApplication::Close() {
    GetHost().Close();
}

ScriptObjectPtr ScriptApplication::Render(UString const& inPath, UString const& outPath) {
    RenderReport report = Tell([&] { return GetHost().Render(UTF16to8(inPath), UTF16to8(outPath)); });
    return MakeScriptObject<RenderReportObject>(
        GetContextHdl(), [&](RenderReportObject& object) { object.Initialize(std::move(report)); });
}

ScriptObjectPtr ScriptApplication::CreateBus(UString const& type, UString const& layout) const {
    using vynmediatypes::scripting::AudioBusDescriptionObject;
    AudioBusDescription const bus(type, LayoutOfName(UTF16to8(layout)), TypeOfName(UTF16to8(type)));
    return MakeScriptObject<AudioBusDescriptionObject>(
        GetContextHdl(), [&](AudioBusDescriptionObject& object) { object.Initialize(bus); });
}

vyncore::UString ScriptApplication::GetParameterName(int index) const {
    return AskFilter(GetHost(), [&](AudioFilter& filter) {
        auto const info = Has(filter, index) ? filter.GetParameterInfo(index) : nullptr;
        return info ? info->GetName() : UString();
    });
}

int ScriptApplication::FindParameter(UString const& name) const {
    return AskFilter(GetHost(), [&](AudioFilter& filter) {
        std::vector<int> const found = NameLookup("parameter", ReadNames(filter)).FindByName(UTF16to8(name));
        return found.empty() ? -1 : found.front();
    });
}

vyncore::UString ScriptApplication::GetParameterText(int index) const {
    return AskFilter(GetHost(), [&](AudioFilter& filter) {
        return Has(filter, index) ? UTF8to16(TrimBlanks(ValueText(GatherParameter(filter, index)))) : UString();
    });
}

} // namespace vynhost
