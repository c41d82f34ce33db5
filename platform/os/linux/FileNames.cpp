#include "os/FileNames.h"

#include "vyncore/strings/StringUtils.h"

#include <filesystem>

namespace os {

namespace {

std::string Normalise(vyncore::UString const& path) {
    std::string text = std::filesystem::path(vyncore::string::UTF16to8(path)).lexically_normal().string();
    if (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

} // namespace

int CompareFileNames(vyncore::UString const& left, vyncore::UString const& right) {
    if (left == right)
        return 0;
    int const order = Normalise(left).compare(Normalise(right));
    return (order > 0) - (order < 0);
}

} // namespace os
