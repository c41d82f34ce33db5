#pragma once

#include "support/TemporaryFolder.h"
#include "vyncore/filesupport/File.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vynfuzz {

/// A file with that content, in place of what was in it. It goes with the process.
inline vyncore::filesupport::File InputFile(std::string_view content) {
    static vyntest::TemporaryFolder const folder;
    folder.AddFile("input", content);
    return vyncore::filesupport::File(folder.Path16("input"));
}

inline vyncore::filesupport::File InputFile(std::uint8_t const* data, std::size_t size) {
    return InputFile(std::string_view(reinterpret_cast<char const*>(data), size));
}

} // namespace vynfuzz
