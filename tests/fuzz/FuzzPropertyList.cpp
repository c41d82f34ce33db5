#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vyncore/proplist/PropListText.h"

namespace vynfuzz {

using vyncore::UTF8String;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;

void FuzzPropertyList(std::uint8_t const* data, std::size_t size) {
    PropList list;
    if (!ReadPropList(UTF8String(data, data + size), list)) {
        Require(list.IsEmpty(), "a failure changes nothing");
        return;
    }
    UTF8String const text = WritePropList(list);
    PropList again;
    Require(ReadPropList(text, again) && again == list, "what was read survives writing and reading");
    Require(WritePropList(again) == text, "equal lists give equal text");
}

} // namespace vynfuzz
