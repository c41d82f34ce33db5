#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost {

/// Opens a plug-in by the path of its module: a module file, or the folder of a bundle, which stands for the module
/// file in it that fits this machine. The module stays loaded until the library stops, and is shared by all who open
/// it. Null when it can't be opened; reason then has one line that says why, without the path. [main-thread]
VYN_API boost::intrusive_ptr<PluginModule> OpenPluginModule(vyncore::UString const& path, vyncore::UString& reason);

} // namespace vynaudiofilterhost
