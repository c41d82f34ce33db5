#include "vynhost/Session.h"

#include "vynaudiofilterhost/Library.h"
#include "vyncore/threads/MainThreadCalls.h"

namespace vynhost {

Session::Session() {
    vynaudiofilterhost::Initialize(true);
}

Session::~Session() {
    vynaudiofilterhost::Terminate();
}

void Session::RunDueCalls() {
    vyncore::threads::RunDueCalls();
}

} // namespace vynhost
