#pragma once

#include "vyncore/utility/RefCountedInterface.h"

#include <atomic>

namespace vyncore::utility {

/// An object that lives as long as somebody holds a reference, and deletes itself when the count falls back to 0.
///
/// It starts with a count of 0 and belongs to the first boost::intrusive_ptr that takes it. An object on the stack or
/// inside another one is fine as long as nobody takes a reference.
class VYN_API RefCountedObject : public virtual RefCountedInterface {
public:
    /// [any-thread]
    void AddRef() const noexcept override { mReferenceCount.fetch_add(1, std::memory_order_relaxed); }

    /// [any-thread]
    void Release() const noexcept override {
        // The deleting thread must see every write that other holders made before they let go.
        if (mReferenceCount.fetch_sub(1, std::memory_order_acq_rel) != 1)
            return;
        // Whoever takes and gives back a reference while the destructor runs must not delete once more.
        mReferenceCount.store(kDying, std::memory_order_relaxed);
        delete this;
    }

    /// The number of references at this moment. A result of 1 seen by the one holder is reliable, and what other
    /// holders wrote before they let go is visible then.
    /// [any-thread]
    int GetReferenceCount() const noexcept { return mReferenceCount.load(std::memory_order_acquire); }

    /// Whether the last reference has gone and the destructor runs.
    /// [any-thread]
    bool IsBeingDestroyed() const noexcept { return GetReferenceCount() >= kDying / 2; }

protected:
    RefCountedObject() = default;
    RefCountedObject(RefCountedObject const&) noexcept {}
    RefCountedObject& operator=(RefCountedObject const&) noexcept { return *this; }
    ~RefCountedObject() override = default;

private:
    static constexpr int kDying = 1 << 30;

    mutable std::atomic<int> mReferenceCount{0};
};

} // namespace vyncore::utility
