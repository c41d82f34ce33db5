#pragma once

#include "pluginterfaces/base/funknown.h"

#include <atomic>
#include <cstring>
#include <memory>

namespace vynaudiofilterhost::vst3 {

/// What all objects share that the host makes and a plug-in uses through one interface: the answer to queryInterface
/// and the count of references. It owns nothing and knows nothing of what the interface does.
///
/// The count starts at 1, which belongs to whoever made the object; the release of the last reference deletes it. An
/// object inside another one (Life::kEmbedded) goes with that, whatever a plug-in gives back. One that the host uses
/// beside the plug-in (Life::kOwned) goes when the host has disowned it and nobody else holds it: a plug-in that gives
/// back what it never took ends nothing under the host's hands. The destructor follows the slots of the interface in
/// the table of operations.
template <class Interface>
class HostObject : public Interface {
public:
    /// What ends the object.
    enum class Life { kCounted, kEmbedded, kOwned };

    HostObject(HostObject const&) = delete;
    HostObject& operator=(HostObject const&) = delete;

    /// Gives the object as FUnknown or as its own interface, with a reference more; null and kNoInterface for
    /// anything else. kInvalidArgument when there is nowhere to put the answer.
    /// [any-thread]
    Steinberg::tresult PLUGIN_API queryInterface(Steinberg::TUID const interfaceID, void** object) override {
        if (!object)
            return Steinberg::kInvalidArgument;
        bool const known =
            IsInterface(interfaceID, Steinberg::FUnknown::iid) || IsInterface(interfaceID, Interface::iid);
        *object = known ? static_cast<Interface*>(this) : nullptr;
        if (known)
            addRef();
        return known ? Steinberg::kResultOk : Steinberg::kNoInterface;
    }

    /// Takes a reference and gives the new count.
    /// [any-thread]
    Steinberg::uint32 PLUGIN_API addRef() override {
        return static_cast<Steinberg::uint32>(mReferenceCount.fetch_add(1, std::memory_order_relaxed) + 1);
    }

    /// Gives a reference back and gives the new count; at 0 the object is gone.
    /// [any-thread]
    Steinberg::uint32 PLUGIN_API release() override {
        Steinberg::int32 const left = mReferenceCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0 && !mOwned.load(std::memory_order_acquire))
            Destroy();
        return static_cast<Steinberg::uint32>(left > 0 ? left : 0);
    }

    /// Gives the host's own reference on an object of Life::kOwned back, once.
    /// [any-thread]
    void Disown() {
        mOwned.store(false, std::memory_order_release);
        if (mReferenceCount.fetch_sub(1, std::memory_order_acq_rel) <= 1)
            Destroy();
    }

protected:
    explicit HostObject(Life life = Life::kCounted) noexcept : mOwned(life != Life::kCounted) {}
    virtual ~HostObject() = default;

    /// Ends the object.
    /// [any-thread]
    virtual void Destroy() { delete this; }

private:
    // By bytes, because nothing aligns an identifier that a plug-in passes in.
    static bool IsInterface(Steinberg::TUID const interfaceID, Steinberg::FUID const& known) {
        return interfaceID && std::memcmp(interfaceID, known.toTUID(), sizeof(Steinberg::TUID)) == 0;
    }

    std::atomic<Steinberg::int32> mReferenceCount{1};
    std::atomic<bool> mOwned; ///< its end is not the count's alone
};

/// Holds an object of Life::kOwned.
struct DisownObject {
    template <class Object>
    void operator()(Object* object) const noexcept {
        object->Disown();
    }
};
template <class Object>
using OwnedObject = std::unique_ptr<Object, DisownObject>;

} // namespace vynaudiofilterhost::vst3
