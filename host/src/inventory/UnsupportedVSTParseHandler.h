#pragma once

#include "vynaudiofilterhost/inventory/UnsupportedPlugin.h"
#include "vyncore/xml/AbstractParseHandler.h"

#include <vector>

namespace vynaudiofilterhost {

/// Gathers the entries of the static ban list from its file: elements "plugin", wherever they stand, that name a file.
/// All else is passed over.
class UnsupportedVSTParseHandler : public vyncore::xml::AbstractParseHandler {
public:
    /// Appends to `plugins`, which outlives the handler.
    /// [main-thread]
    explicit UnsupportedVSTParseHandler(std::vector<UnsupportedPlugin>& plugins) : mPlugins(plugins) {}

    /// [main-thread]
    void StartElement(vyncore::UString const& name, Attributes const& attributes) override;
    /// [main-thread]
    void EndElement(vyncore::UString const&) override {}
    /// [main-thread]
    void Characters(vyncore::UString const&) override {}

private:
    std::vector<UnsupportedPlugin>& mPlugins;
};

} // namespace vynaudiofilterhost
