#include "vynaudiofilterhost/inventory/UnsupportedVSTParseHandler.h"

#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;

namespace {

UString ValueOf(vyncore::xml::AbstractParseHandler::Attributes const& attributes, char16_t const* name) {
    auto const found = attributes.find(name);
    return found != attributes.end() ? found->second : UString();
}

} // namespace

void UnsupportedVSTParseHandler::StartElement(UString const& name, Attributes const& attributes) {
    if (name != u"plugin")
        return;
    UString fileName = ValueOf(attributes, u"filename");
    if (!fileName.empty())
        mPlugins.push_back({std::move(fileName), ValueOf(attributes, u"uniqueid"), ValueOf(attributes, u"version")});
}

} // namespace vynaudiofilterhost
