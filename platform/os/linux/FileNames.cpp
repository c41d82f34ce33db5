#include "os/FileNames.h"

#include "vyncore/strings/StringUtils.h"

#include <filesystem>

namespace os {

vyncore::UTF8String FileNameKey(vyncore::UString const& path) {
    vyncore::UTF8String text = std::filesystem::path(vyncore::string::UTF16to8(path)).lexically_normal().string();
    if (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

int CompareFileNames(vyncore::UString const& left, vyncore::UString const& right) {
    if (left == right)
        return 0;
    int const order = FileNameKey(left).compare(FileNameKey(right));
    return (order > 0) - (order < 0);
}

} // namespace os
