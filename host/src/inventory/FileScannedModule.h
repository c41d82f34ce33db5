#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost {

/// Files what a scan has found out about a module, as the last thing it does with it: the module with the inventory, in
/// the place of what was known of it, and then its filters with the catalogue, in order. The info is told whether any
/// of them is no instrument. Nothing without an info; a null among the descriptors is passed over.
/// [main-thread]
void FileScannedModule(boost::intrusive_ptr<PluginModuleInfo> const& info,
                       std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> const& descriptors);

} // namespace vynaudiofilterhost
