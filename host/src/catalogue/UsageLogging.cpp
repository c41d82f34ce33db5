#include "vynaudiofilterhost/catalogue/UsageLogging.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vyncore/config/UsageLogger.h"
#include "vyncore/strings/StringUtils.h"

#include <string>

namespace vynaudiofilterhost {

using vyncore::UTF8String;
using vyncore::config::UsageLogger;
using vyncore::config::UsageLoggerGroup;
using vyncore::string::UTF16to8;

namespace {

void AddEntries(UsageLoggerGroup& group, AudioFilterDescriptor const& descriptor) {
    group.AddString("version", std::to_string(descriptor.GetVersion()));
    group.AddString("name", UTF16to8(descriptor.GetName()));
    group.AddString("vendor", UTF16to8(descriptor.GetVendorString()));
    group.AddString("category", AudioFilterCategoryInvariantName(descriptor.GetCategory()));
    group.AddString("id", UTF16to8(descriptor.GetUniqueID()));
    group.AddString("factory_guid", UTF16to8(descriptor.GetFactoryGuid().AsString()));
    group.Add("enabled", descriptor.IsEnabled());
    group.Add("synth", descriptor.IsSynth());
    group.Add("internal", descriptor.IsInternal());
}

} // namespace

void LogAudioFilterUsage(boost::intrusive_ptr<AudioFilterDescriptor> const& descriptor, UTF8String const& usageContext,
                         UTF8String const& groupArgument) {
    auto const logger = descriptor ? UsageLogger::Get() : nullptr;
    if (!logger)
        return;
    auto const group =
        logger->OpenGroup("vynaudiofilterhost", "audiofilter", "vynaudiofilterhost_audiofilter", groupArgument);
    if (!group)
        return;
    AddEntries(*group, *descriptor);
    if (!usageContext.empty())
        group->AddString("usage_context", usageContext);
}

void LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter> const& filter, UTF8String const& usageContext,
                         UTF8String const& groupArgument) {
    if (!filter)
        return;
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    LogAudioFilterUsage(catalogue.GetComponentDescriptorForID(filter->GetID()), usageContext, groupArgument);
}

} // namespace vynaudiofilterhost
