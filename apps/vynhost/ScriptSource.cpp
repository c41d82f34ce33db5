#include "vynhost/ScriptSource.h"

#include "vynhost/InputFile.h"

#include "vynscripting/ScriptError.h"

#include <algorithm>
#include <cstddef>
#include <utf8.h>

namespace vynhost {

std::string ReadScriptSource(std::string const& path) {
    constexpr std::size_t kMostBytes = std::size_t{16} << 20;
    std::string source = ReadInputFile(path, kMostBytes);
    if (auto const odd = utf8::find_invalid(source.begin(), source.end()); odd != source.end())
        throw vynscripting::ScriptError("is no UTF-8 text", path,
                                        1 + static_cast<int>(std::count(source.begin(), odd, '\n')), {});
    return source;
}

} // namespace vynhost
