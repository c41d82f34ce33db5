#pragma once

#include "vyncore/Export.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynscripting {

/// What the objects of one engine have in common: how their items are called. It outlives the engine when objects do.
class VYN_API ScriptContext : public vyncore::utility::RefCountedObject {
public:
    /// Items that can be called asynchronously are: they give a promise.
    static constexpr unsigned kAsynchronousCalls = 0x4;

    /// [main-thread]
    unsigned GetFlags() const noexcept { return mFlags; }

    /// [main-thread]
    void SetFlags(unsigned flags) noexcept { mFlags = flags; }

private:
    unsigned mFlags = 0;
};

using ScriptContextHdl = boost::intrusive_ptr<ScriptContext>;

} // namespace vynscripting
