#include "vynaudiofilterhost/Message.h"

namespace vynaudiofilterhost {

Message::Message() = default;

Message::~Message() = default;

bool Message::ExecuteOnProcessThread() {
    return true;
}

bool Message::ExecuteOnMainThread() {
    return true;
}

} // namespace vynaudiofilterhost
