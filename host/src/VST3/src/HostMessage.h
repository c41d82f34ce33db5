#pragma once

#include "vynaudiofilterhost/VST3/src/HostAttributeList.h"
#include "vynaudiofilterhost/VST3/src/HostObject.h"

#include "pluginterfaces/vst/ivstmessage.h"

#include <string>

namespace vynaudiofilterhost::vst3 {

/// A message between the two halves of a plug-in, made for it by the host, which never reads it. It lives by its count
/// of references. It has no lock: one thread at a time uses it.
class HostMessage final : public HostObject<Steinberg::Vst::IMessage> {
public:
    HostMessage() = default;

    /// Gives its reference on the attributes back.
    /// [any-thread]
    ~HostMessage() override;

    /// The ID, never null, valid until it changes.
    /// [any-thread]
    Steinberg::FIDString PLUGIN_API getMessageID() override;

    /// Takes a copy of the ID; null empties it.
    /// [any-thread]
    void PLUGIN_API setMessageID(Steinberg::FIDString id) override;

    /// The attributes, made when first asked for, null when there is no memory for them. The reference stays the
    /// message's.
    /// [any-thread]
    Steinberg::Vst::IAttributeList* PLUGIN_API getAttributes() override;

private:
    std::string mMessageID;
    HostAttributeList* mAttributes = nullptr; // holds one reference
};

} // namespace vynaudiofilterhost::vst3
