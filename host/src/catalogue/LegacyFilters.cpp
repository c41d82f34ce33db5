#include "vynaudiofilterhost/catalogue/LegacyFilters.h"

#include "vyncore/debug/DebugDatabase.h"

namespace vynaudiofilterhost {

using vyncore::debug::DebugDatabase;

namespace {

constexpr char const* kKey = "UseLegacyAudioFilters";

} // namespace

void UseLegacyFilters(bool use) {
    DebugDatabase::Get().SetBool(kKey, use);
}

bool IsUsingLegacyFilters() {
    return DebugDatabase::Get().GetBool(kKey, true);
}

} // namespace vynaudiofilterhost
