#include "vynhost/ScriptCommand.h"

#include "vynhost/CommandError.h"
#include "vynhost/JSONText.h"
#include "vynhost/ScriptApplication.h"
#include "vynhost/ScriptHost.h"
#include "vynhost/ScriptInterface.h"
#include "vynhost/ScriptOutput.h"
#include "vynhost/ScriptResult.h"
#include "vynhost/ScriptSource.h"
#include "vynhost/ScriptWatchdog.h"
#include "vynhost/Session.h"

#include "vynscripting/ScriptEngine.h"
#include "vynscripting/ScriptError.h"

#include <algorithm>
#include <new>
#include <sstream>
#include <stdexcept>

namespace vynhost {

using vynscripting::ScriptEngine;
using vynscripting::ScriptError;

namespace {

std::string List(ScriptRequest const& request) {
    if (request.markdown)
        return FormatScriptInterfaceMarkdown();
    return request.json ? FormatScriptInterfaceJSON() : FormatScriptInterfaceText();
}

std::vector<std::string> SplitLines(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.substr(std::min(line.find_first_not_of(" \t"), line.size())));
    return lines;
}

[[noreturn]] void Fail(ScriptError const& error, ScriptOutput const& output, bool json) {
    std::vector<std::string> const stack = SplitLines(error.GetStack());
    std::string const line = error.GetLine() > 0 ? ':' + std::to_string(error.GetLine()) : "";
    if (!json)
        throw CommandError::OfFile(error.GetFile() + line, error.what()).WithTrace(stack);
    nlohmann::ordered_json document{{"error", error.what()}, {"file", error.GetFile()}, {"line", nullptr}};
    if (error.GetLine() > 0)
        document["line"] = error.GetLine();
    document["stack"] = stack;
    document["printed"] = output.GetLines();
    throw FailedReport{ToText(document)};
}

std::unique_ptr<ScriptEngine> MakeEngine(ScriptRequest const& request) {
    vynscripting::ScriptLimits limits;
    limits.memoryBytes = static_cast<std::size_t>(request.memoryMiB) << 20;
    limits.seconds = request.timeoutSeconds;
    try {
        return ScriptEngine::Create(limits);
    } catch (std::bad_alloc const&) {
        throw CommandError::WrongUsage("--memory: " + std::to_string(request.memoryMiB) +
                                       " MiB leave no room for a script");
    }
}

// The result as a document, since objects of the script go with its engine.
nlohmann::ordered_json RunSource(ScriptRequest const& request, std::string const& source, ScriptHost& host,
                                 ScriptOutput& output) {
    auto const engine = MakeEngine(request);
    engine->SetPrint([&output](std::string const& line) { output.Print(line); });
    ScriptApplication::Enter(*engine, host);
    return ToJSON(engine->Run(source, *request.path));
}

std::string RunInSession(ScriptRequest const& request, std::string const& source, ScriptOutput& output) {
    ScriptWatchdog watchdog(request.json ? FailureForm::kJSONDocument : FailureForm::kText, *request.path,
                            request.timeoutSeconds);
    watchdog.Restart("the plug-in");
    Session const session;
    ScriptHost host(*request.path, request.arguments);
    if (request.plugin)
        host.Open(*request.plugin, request.classID);
    watchdog.Restart("what the script called");
    nlohmann::ordered_json const result = RunSource(request, source, host, output);
    watchdog.Restart("the plug-in");
    host.Close();
    if (output.HasFailed())
        throw std::runtime_error("what the script prints could not be written");
    return request.json ? ToText({{"printed", output.GetLines()}, {"result", result}}) : "";
}

} // namespace

std::string RunScript(ScriptRequest const& request) {
    if (request.lists)
        return List(request);
    ScriptOutput output(request.json);
    try {
        return RunInSession(request, ReadScriptSource(*request.path), output);
    } catch (ScriptError const& error) {
        Fail(error, output, request.json);
    }
}

} // namespace vynhost
