#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include "vyncore/filesupport/CompareFileNames.h"
#include "vyncore/strings/StringStreams.h"

#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::filesupport::CompareFileNames;

PluginLocator::PluginLocator(TechnologyType technology, UString const& path) : mTechnology(technology), mPath(path) {}

void PluginLocator::Swap(PluginLocator& other) noexcept {
    std::swap(mTechnology, other.mTechnology);
    mPath.swap(other.mPath);
}

UString PluginLocator::ToString() const {
    vyncore::oUTF16StringStream stream;
    stream << static_cast<int>(mTechnology) << u':' << mPath;
    return stream.str();
}

void PluginLocator::FromString(UString const& text) {
    auto const colon = text.find(u':');
    if (colon == UString::npos) {
        *this = PluginLocator();
        return;
    }
    vyncore::iUTF16StringStream stream(text.substr(0, colon));
    int technology = 0;
    stream >> technology;
    *this = PluginLocator(static_cast<TechnologyType>(technology), text.substr(colon + 1));
}

bool PluginLocator::operator==(PluginLocator const& other) const {
    return mTechnology == other.mTechnology && CompareFileNames(mPath, other.mPath) == 0;
}

bool PluginLocator::operator<(PluginLocator const& other) const {
    if (mTechnology != other.mTechnology)
        return mTechnology < other.mTechnology;
    return CompareFileNames(mPath, other.mPath) < 0;
}

} // namespace vynaudiofilterhost
