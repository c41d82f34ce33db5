#include "plugins/HostLink.h"

#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstcontextmenu.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstunits.h"

namespace vynfixtures {

tresult HostLink::Initialize(FUnknown* context, bool fails, unsigned& answers) {
    static std::pair<int8 const*, FixtureHostInterface> const interfaces[] = {
        {IHostApplication_iid, kHostApplication},
        {IComponentHandler_iid, kComponentHandler},
        {IComponentHandler2_iid, kComponentHandler2},
        {IComponentHandler3_iid, kComponentHandler3},
        {IUnitHandler_iid, kUnitHandler},
        {kVendorHostID, kVendorHost},
        {Linux::IRunLoop_iid, kRunLoop},
    };
    Record(mObject, "initialize", {.argument = context != nullptr});
    answers = 0;
    for (auto const& [id, bit] : interfaces)
        answers |= Ask<FUnknown>(context, id) ? bit : 0U;
    if (auto const host = Ask<IHostApplication>(context, IHostApplication_iid))
        host->getName(ModuleState::Get().snapshot.hostName);
    if (fails)
        return kInternalError;
    mContext = context;
    if (mContext != nullptr)
        mContext->addRef();
    ++mOpenCount;
    return kResultOk;
}

int HostLink::SendMessage(unsigned number) {
    auto const host = Ask<IHostApplication>(mContext, IHostApplication_iid);
    TUID messageID;
    std::copy_n(IMessage_iid, sizeof(TUID), messageID);
    void* made = nullptr;
    if (!host || mPeer == nullptr || host->createInstance(messageID, messageID, &made) != kResultOk)
        return kFixtureNoHost;
    auto const message = owned(static_cast<IMessage*>(made));
    message->setMessageID("fixture");
    message->getAttributes()->setInt("number", number);
    return mPeer->notify(message);
}

} // namespace vynfixtures
