#pragma once

#include "pluginterfaces/base/funknown.h"

#include <atomic>
#include <cstring>

namespace vynaudiofilterhost::vst3 {

/// What all objects share that the host makes and a plug-in uses through one interface: the answer to queryInterface
/// and the count of references. It owns nothing and knows nothing of what the interface does.
///
/// The count starts at 1, which belongs to whoever made the object; the release of the last reference deletes it. An
/// object inside another one (Life::kEmbedded) goes with that, whatever a plug-in gives back. The destructor follows
/// the slots of the interface in the table of operations.
template <class Interface>
class HostObject : public Interface {
public:
    /// Whether the count ends the object, or whoever it is a part of.
    enum class Life { kCounted, kEmbedded };

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
        if (left == 0 && mLife == Life::kCounted)
            delete this;
        return static_cast<Steinberg::uint32>(left);
    }

protected:
    explicit HostObject(Life life = Life::kCounted) noexcept : mLife(life) {}
    virtual ~HostObject() = default;

private:
    // By bytes, because nothing aligns an identifier that a plug-in passes in.
    static bool IsInterface(Steinberg::TUID const interfaceID, Steinberg::FUID const& known) {
        return interfaceID && std::memcmp(interfaceID, known.toTUID(), sizeof(Steinberg::TUID)) == 0;
    }

    std::atomic<Steinberg::int32> mReferenceCount{1};
    Life const mLife;
};

} // namespace vynaudiofilterhost::vst3
