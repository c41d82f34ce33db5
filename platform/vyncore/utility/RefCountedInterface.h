#pragma once

#include "vyncore/Export.h"

namespace vyncore::utility {

/// What an object with a shared life answers: how to take and how to give back a reference.
/// Held through boost::intrusive_ptr. Always a virtual base, so that an object has one count however it is reached.
class VYN_API RefCountedInterface {
public:
    /// Takes a reference. Never fails, never allocates.
    /// [any-thread]
    virtual void AddRef() const noexcept = 0;

    /// Gives a reference back; the last one destroys the object on the calling thread.
    /// [any-thread]
    virtual void Release() const noexcept = 0;

protected:
    RefCountedInterface() = default;
    RefCountedInterface(RefCountedInterface const&) = default;
    RefCountedInterface& operator=(RefCountedInterface const&) = default;
    virtual ~RefCountedInterface() = default;
};

inline void intrusive_ptr_add_ref(RefCountedInterface const* object) noexcept {
    object->AddRef();
}

inline void intrusive_ptr_release(RefCountedInterface const* object) noexcept {
    object->Release();
}

} // namespace vyncore::utility
