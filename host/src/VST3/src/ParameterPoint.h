#pragma once

#include <cstddef>
#include <cstdint>

namespace vynaudiofilterhost::vst3 {

/// The number of points that is reserved for one parameter: between two blocks, and within one block.
inline constexpr std::size_t kParameterPointCapacity = 100;

/// A value of a parameter at a place in the block. A plain record without initial values, so that a block of
/// reserved points costs no memory until points are written to it.
struct ParameterPoint {
    double value;              ///< normalized, 0..1
    std::int32_t sampleOffset; ///< samples from the start of the block
};

} // namespace vynaudiofilterhost::vst3
