#pragma once

#include "vyncore/allocator/STLAllocator.h"

#include <cstddef>
#include <span>
#include <vector>

/// The chunk of a preset: the states of component and controller in one. Numbers are 64-bit, little-endian, unsigned.
/// The size of the component's state, the size of the controller's, the bytes of the one, the bytes of the other.
namespace vynaudiofilterhost::vst3 {

using ChunkBytes = std::vector<unsigned char, vyncore::allocator::STLAllocator<unsigned char>>;

/// The two states, each a part of somebody else's bytes. Empty: the chunk has none.
struct VST3States {
    std::span<unsigned char const> component;
    std::span<unsigned char const> controller;
    /// Whether all of both is there. A state that was cut short counts as none, and what should follow it likewise.
    bool whole = false;
};

/// Takes a chunk apart, whatever its bytes are.
/// [any-thread]
VST3States SplitStateChunk(std::span<unsigned char const> chunk);

/// How many bytes stand before the states.
inline constexpr std::size_t kStateChunkHeader = 16;

/// Makes a chunk of bytes whose first kStateChunkHeader are free and whose rest is the component's state. Throws
/// std::bad_alloc, std::length_error.
/// [any-thread]
ChunkBytes JoinStateChunk(ChunkBytes component, std::span<unsigned char const> controller);

} // namespace vynaudiofilterhost::vst3
