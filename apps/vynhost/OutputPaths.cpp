#include "vynhost/OutputPaths.h"

#include "vynhost/CommandError.h"
#include "vynhost/RenderCommand.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace vynhost {

namespace fs = std::filesystem;

namespace {

// Where a file is written, also one that isn't there yet at the end of a link. Empty when that can't be told.
fs::path Resolve(std::string const& name) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    fs::path path = fs::absolute(name, error);
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i)
        path = path.parent_path() / fs::read_symlink(path, error);
    path = fs::weakly_canonical(path, error);
    return error ? fs::path() : path;
}

bool AreSameFile(std::string const& path, std::string const& other) {
    std::error_code error;
    if (fs::equivalent(path, other, error))
        return true;
    fs::path const resolved = Resolve(path);
    return !resolved.empty() && resolved == Resolve(other);
}

bool IsWithin(std::string const& path, std::string const& folder) {
    std::error_code error;
    fs::path const outer = fs::canonical(folder, error);
    if (error || !fs::is_directory(outer, error))
        return false;
    fs::path const inner = Resolve(path);
    return std::ranges::mismatch(outer, inner).in1 == outer.end();
}

void Check(std::string const& path, std::vector<std::string> const& others, char const* conflict) {
    for (std::string const& other : others) {
        if (!other.empty() && AreSameFile(path, other))
            throw CommandError(ExitStatus::kWrongUsage, CommandError::Subject::kFile, path, conflict);
    }
}

void CheckOutside(std::string const& path, std::string const& module) {
    if (IsWithin(path, module))
        throw CommandError(ExitStatus::kWrongUsage, CommandError::Subject::kFile, path,
                           "lies in the folder of the plug-in");
}

} // namespace

void CheckOutputPaths(RenderRequest const& request) {
    std::vector<std::string> inputs{request.inputPath.value_or(""), request.sideChainPath.value_or(""),
                                    request.modulePath, request.automationPath.value_or(""),
                                    request.midiPath.value_or("")};
    if (request.saveStatePath) {
        Check(*request.saveStatePath, inputs, "is the input as well as the saved state");
        Check(*request.saveStatePath, {request.outputPath}, "is the output as well as the saved state");
        CheckOutside(*request.saveStatePath, request.modulePath);
    }
    inputs.push_back(request.statePath.value_or(""));
    Check(request.outputPath, inputs, "is the input as well as the output");
    CheckOutside(request.outputPath, request.modulePath);
}

} // namespace vynhost
