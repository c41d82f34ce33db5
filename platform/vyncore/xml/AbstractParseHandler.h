#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <map>

namespace vyncore::xml {

/// Is told what an XML document holds, from its beginning to its end. Owned by whoever has the document parsed. What it
/// throws ends the parsing and reaches whoever asked for it.
class VYN_API AbstractParseHandler {
public:
    /// Values by names.
    using Attributes = std::map<UString, UString>;

    AbstractParseHandler(AbstractParseHandler const&) = delete;
    AbstractParseHandler& operator=(AbstractParseHandler const&) = delete;
    /// [any-thread]
    virtual ~AbstractParseHandler() = default;

    /// An element begins.
    /// [any-thread]
    virtual void StartElement(UString const& name, Attributes const& attributes) = 0;

    /// The element ends that was the last to begin among those that have not ended.
    /// [any-thread]
    virtual void EndElement(UString const& name) = 0;

    /// Text inside an element. What stands between two elements may come in several pieces.
    /// [any-thread]
    virtual void Characters(UString const& text) = 0;

protected:
    AbstractParseHandler() = default;
};

} // namespace vyncore::xml
