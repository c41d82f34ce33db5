#include "plugins/HostLink.h"

#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstcontextmenu.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstunits.h"

namespace vynfixtures {
namespace {

void TryInstances(IHostApplication& host, FixtureSnapshot& snapshot) {
    static int8 const* const ids[] = {IMessage_iid, IAttributeList_iid, FUnknown_iid, IHostApplication_iid};
    snapshot.instancesMade = snapshot.instancesRefused = 0;
    for (unsigned pair = 0; pair < 16; ++pair) {
        TUID classID, interfaceID;
        std::copy_n(ids[pair / 4], sizeof(TUID), classID);
        std::copy_n(ids[pair % 4], sizeof(TUID), interfaceID);
        void* made = &host;
        tresult const result = host.createInstance(classID, interfaceID, &made);
        snapshot.instancesRefused |= (result == kResultFalse && made == nullptr ? 1U : 0U) << pair;
        if (result != kResultOk || made == nullptr)
            continue;
        snapshot.instancesMade |= 1U << pair;
        static_cast<FUnknown*>(made)->release();
    }
}

} // namespace

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
    if (auto const host = Ask<IHostApplication>(context, IHostApplication_iid)) {
        std::fill(std::begin(ModuleState::Get().snapshot.hostName), std::end(ModuleState::Get().snapshot.hostName),
                  u'?');
        host->getName(ModuleState::Get().snapshot.hostName);
        TryInstances(*host, ModuleState::Get().snapshot);
    }
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
