#include "vyncore/proplist/PropListFile.h"

#include "os/FileContent.h"
#include "vyncore/filesupport/SafeSave.h"
#include "vyncore/proplist/PropListText.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

namespace vyncore::proplist::utils {

namespace {

void Merge(PropList const& from, PropList& list) {
    for (auto const& value : from.GetValues())
        std::visit([&](auto const& held) { list.SetValue(value.first, held); }, value.second);
    for (auto const& [key, sublist] : from.GetLists())
        Merge(*sublist, list.CreateList(key));
}

} // namespace

bool LoadPropList(UString const& path, PropList& list, bool merge) {
    std::optional<std::string> text = os::ReadFileContent(path, kMostFileBytes);
    PropList read;
    if (!text || !ReadPropList(std::move(*text), read))
        return false;
    if (merge)
        Merge(read, list);
    else
        list = std::move(read);
    return true;
}

bool SavePropList(filesupport::File const& file, PropList const& list) {
    UTF8String const text = WritePropList(list);
    if (text.size() > kMostFileBytes)
        throw std::length_error("a property list is too large for a file");
    filesupport::SafeSave save(file);
    if (!save.Write(text))
        return false;
    save.Commit();
    return true;
}

} // namespace vyncore::proplist::utils
