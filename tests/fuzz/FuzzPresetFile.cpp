#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/VST3/src/VST3PresetFile.h"

#include <algorithm>

namespace vynfuzz {

using namespace vynaudiofilterhost::vst3;

void FuzzPresetFile(std::uint8_t const* data, std::size_t size) {
    VST3PresetContent content;
    if (ParseVST3PresetFile({data, size}, content))
        return;
    ChunkBytes const file = MakeVST3PresetFile(content);
    VST3PresetContent again;
    Require(!ParseVST3PresetFile(file, again), "what was read can be written");
    Require(again.classID == content.classID && std::ranges::equal(again.states.component, content.states.component) &&
                std::ranges::equal(again.states.controller, content.states.controller),
            "what was read survives writing and reading");
}

} // namespace vynfuzz
