#pragma once

#include "pluginterfaces/base/funknown.h"

#include <utility>

namespace vynaudiofilterhost::vst3 {

/// Does one step of taking a plug-in down; what it throws is dropped, because the rest has to be done all the same.
/// [any-thread]
template <class Step>
void Guarded(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
    } catch (...) {
    }
}

/// Owns one reference on a plug-in's object, which may be null, and gives it back without letting an exception out.
template <class Interface>
class PluginPointer {
public:
    /// Takes over the reference.
    /// [any-thread]
    explicit PluginPointer(Interface* object = nullptr) noexcept : mObject(object) {}
    PluginPointer(PluginPointer const&) = delete;
    PluginPointer& operator=(PluginPointer const&) = delete;
    ~PluginPointer() {
        if (mObject)
            Guarded([this] { mObject->release(); });
    }

    /// [any-thread]
    Interface* Get() const noexcept { return mObject; }
    Interface* operator->() const noexcept { return mObject; }
    explicit operator bool() const noexcept { return mObject != nullptr; }

private:
    Interface* const mObject;
};

/// Asks an object for an interface, which comes with a reference. Null when it has none: a plug-in that says yes and
/// gives nothing has said no.
/// [any-thread]
template <class Interface>
Interface* Query(Steinberg::FUnknown* object) {
    void* found = nullptr;
    if (!object || object->queryInterface(Interface::iid, &found) != Steinberg::kResultOk)
        return nullptr;
    return static_cast<Interface*>(found);
}

} // namespace vynaudiofilterhost::vst3
