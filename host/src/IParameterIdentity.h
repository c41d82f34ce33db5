#pragma once

#include "vyncore/Export.h"

#include <cstdint>

namespace vynaudiofilterhost {

/// The number by which a plug-in itself knows a parameter, and which stays the same over its versions where the index
/// may not. Parameter information that has one derives from it beside AudioFilterParameterInfo; ask with dynamic_cast.
class VYN_API IParameterIdentity {
public:
    /// [any-thread]
    virtual std::uint32_t GetParameterID() const = 0;

protected:
    ~IParameterIdentity() = default;
};

} // namespace vynaudiofilterhost
