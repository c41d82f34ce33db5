#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"

#include <algorithm>

namespace vynfuzz {

using namespace vynaudiofilterhost::vst3;

void FuzzStateChunk(std::uint8_t const* data, std::size_t size) {
    std::span<unsigned char const> const chunk(data, size);
    VST3States const states = SplitStateChunk(chunk);
    Require(states.component.size() + states.controller.size() <= size, "no state is longer than the chunk");
    if (!states.whole)
        return;
    ChunkBytes component(kStateChunkHeader);
    component.insert(component.end(), states.component.begin(), states.component.end());
    ChunkBytes const joined = JoinStateChunk(component, states.controller);
    Require(joined.size() <= size && std::ranges::equal(joined, chunk.first(joined.size())),
            "what was taken apart whole gives the same bytes again");
}

} // namespace vynfuzz
