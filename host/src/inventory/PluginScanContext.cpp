#include "vynaudiofilterhost/inventory/PluginScanContext.h"

namespace vynaudiofilterhost {

PluginScanContext::PluginScanContext() = default;

PluginScanContext::~PluginScanContext() = default;

} // namespace vynaudiofilterhost
