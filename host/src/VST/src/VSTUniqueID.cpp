#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"

#include "vynaudiofilterhost/inventory/TechnologyType.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringStreams.h"

namespace vynaudiofilterhost::vst {

using vyncore::UString;

UString MakeVSTUniqueID(unsigned number, UString const& modulePath) {
    vyncore::oUTF16StringStream stream;
    stream << static_cast<int>(kTechnologyVST) << u':' << number << u' '
           << vyncore::filesupport::File(modulePath).GetTitle();
    return stream.str();
}

void ParseVSTUniqueID(UString const& id, unsigned& number) {
    vyncore::iUTF16StringStream stream(id.size() > 2 && id[1] == u':' ? id.substr(2) : id);
    stream >> number;
}

} // namespace vynaudiofilterhost::vst
