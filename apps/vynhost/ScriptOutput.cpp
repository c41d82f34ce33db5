#include "vynhost/ScriptOutput.h"

#include "os/Console.h"

#include <stdexcept>

namespace vynhost {

void ScriptOutput::Print(std::string const& line) {
    mBytes += line.size() + sizeof(std::string);
    bool const kept = mKeeps && mBytes <= kMostBytes;
    if (kept)
        mLines.push_back(line);
    if (kept || (!mKeeps && os::WriteOutput(line + '\n')))
        return;
    mFailed = true;
    throw std::runtime_error(mKeeps ? "more is printed than one document can hold"
                                    : "standard output can't be written");
}

} // namespace vynhost
