#include "vynaudiofilterhost/VST3/src/HostMessage.h"

#include <exception>
#include <new>

namespace vynaudiofilterhost::vst3 {

HostMessage::~HostMessage() {
    if (mAttributes)
        mAttributes->release();
}

Steinberg::FIDString PLUGIN_API HostMessage::getMessageID() {
    return mMessageID.c_str();
}

void PLUGIN_API HostMessage::setMessageID(Steinberg::FIDString id) {
    try {
        mMessageID = id ? id : "";
    } catch (std::exception const&) {
        mMessageID.clear();
    }
}

Steinberg::Vst::IAttributeList* PLUGIN_API HostMessage::getAttributes() {
    if (!mAttributes)
        mAttributes = new (std::nothrow) HostAttributeList;
    return mAttributes;
}

} // namespace vynaudiofilterhost::vst3
