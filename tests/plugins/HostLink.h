#pragma once

#include "plugins/FixtureInterfaces.h"
#include "plugins/ModuleState.h"

#include "pluginterfaces/vst/ivsthostapplication.h"

#include <utility>

namespace vynfixtures {

/// One side's references to the world outside: the context that `initialize` brought and the peer that `connect`
/// brought. Part of a component or a controller. Its end releases nothing: what the host forgot to take back shows as a
/// leak of the fixture's objects.
class HostLink {
public:
    explicit HostLink(FixtureObject object) : mObject(object) {}

    /// Notes what the context answers for into `answers` (FixtureHostInterface bits), and keeps it unless `fails`.
    tresult Initialize(FUnknown* context, bool fails, unsigned& answers);

    tresult Terminate() {
        Record(mObject, "terminate");
        if (FUnknown* const context = std::exchange(mContext, nullptr))
            context->release();
        --mOpenCount;
        return kResultOk;
    }

    tresult Connect(IConnectionPoint* peer) {
        Record(mObject, "connect", {.argument = peer != nullptr});
        if (peer == nullptr || mPeer != nullptr)
            return kResultFalse;
        mPeer = peer;
        mPeer->addRef();
        return kResultOk;
    }

    tresult Disconnect(IConnectionPoint* peer) {
        // Let go first and file then: a call that is told to throw does so after its work.
        bool const known = peer != nullptr && peer == mPeer;
        if (known)
            std::exchange(mPeer, nullptr)->release();
        Record(mObject, "disconnect", {.argument = peer != nullptr});
        return known ? kResultOk : kResultFalse;
    }

    tresult Notify(IMessage* message) {
        int64 number = -1;
        message->getAttributes()->getInt("number", number);
        Record(mObject, "notify", {.argument = number});
        return kResultOk;
    }

    /// Sends the peer a message that the host made; kFixtureNoHost when there is no host or no peer.
    int SendMessage(unsigned number);

    FUnknown* GetContext() const { return mContext; }

    /// Initialize calls without their Terminate.
    int GetOpenCount() const { return mOpenCount; }

private:
    FixtureObject const mObject;
    int mOpenCount = 0;
    FUnknown* mContext = nullptr;
    IConnectionPoint* mPeer = nullptr;
};

} // namespace vynfixtures
