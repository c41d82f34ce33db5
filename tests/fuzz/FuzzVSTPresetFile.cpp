#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/VST/src/VSTPresetFile.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace vynfuzz {

using namespace vynaudiofilterhost::vst;
using vynaudiofilterhost::IPresetExchange;

namespace {

bool IsSame(VSTPresetContent const& one, VSTPresetContent const& other) {
    auto const sameBits = [](float left, float right) {
        return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
    };
    return one.uniqueID == other.uniqueID && one.effectVersion == other.effectVersion && one.isChunk == other.isChunk &&
           one.parameterCount == other.parameterCount && std::ranges::equal(one.chunk, other.chunk) &&
           std::ranges::equal(one.parameters, other.parameters, sameBits);
}

void RequireReadAgain(VSTPresetContent const& content, IPresetExchange::Bytes const& file) {
    VSTPresetContent again;
    Require(!ParseVSTPresetFile(file, again), "what was written can be read");
    Require(IsSame(again, content), "what was read survives writing and reading");
    Require(content.name.starts_with(again.name), "a name is cut and not changed");
    Require(content.name.size() > 27 || again.name == content.name, "a name that fits is kept");
}

} // namespace

void FuzzVSTPresetFile(std::uint8_t const* data, std::size_t size) {
    VSTPresetContent content;
    if (ParseVSTPresetFile({data, size}, content))
        return;
    Require(content.parameters.size() * sizeof(float) + content.chunk.size() < size,
            "no state is longer than the file");
    Require(std::ranges::all_of(content.parameters, [](float value) { return std::isfinite(value); }),
            "all parameters are numbers");
    IPresetExchange::Bytes file;
    Require(!MakeVSTPresetFile(content, file), "what was read can be written");
    RequireReadAgain(content, file);
    Require(!MakeVSTBankFile(content, file) == !content.isChunk, "a bank holds parameters alone");
    RequireReadAgain(content, file);
}

} // namespace vynfuzz
