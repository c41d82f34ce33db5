#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"

#include "vynaudiofilterhost/VST3/src/LittleEndian.h"

#include <algorithm>
#include <cstdint>

namespace vynaudiofilterhost::vst3 {

using Span = std::span<unsigned char const>;

namespace {

constexpr std::size_t kSizeBytes = 8;

// Cuts off the first `size` bytes of `rest`. Of fewer nothing is left, neither for this part nor for the next.
bool TakePart(Span& rest, std::uint64_t size, Span& part) {
    bool const whole = size <= rest.size();
    if (whole)
        part = rest.first(static_cast<std::size_t>(size));
    rest = rest.subspan(whole ? part.size() : rest.size());
    return whole;
}

} // namespace

VST3States SplitStateChunk(Span chunk) {
    VST3States states;
    if (chunk.size() < kStateChunkHeader)
        return states;
    auto const componentSize = ReadLittleEndian<std::uint64_t>(chunk);
    auto const controllerSize = ReadLittleEndian<std::uint64_t>(chunk.subspan(kSizeBytes));
    Span rest = chunk.subspan(kStateChunkHeader);
    states.whole = TakePart(rest, componentSize, states.component);
    states.whole = TakePart(rest, controllerSize, states.controller) && states.whole;
    return states;
}

ChunkBytes JoinStateChunk(ChunkBytes component, Span controller) {
    ChunkBytes header;
    AppendLittleEndian(header, std::uint64_t{component.size() - kStateChunkHeader});
    AppendLittleEndian(header, std::uint64_t{controller.size()});
    std::ranges::copy(header, component.begin());
    component.insert(component.end(), controller.begin(), controller.end());
    return component;
}

} // namespace vynaudiofilterhost::vst3
