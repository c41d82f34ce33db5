#include "vynaudiofilterhost/OpenPluginModule.h"

#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vynaudiofilterhost/VST3/src/VST3Bundle.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"

namespace vynaudiofilterhost {

boost::intrusive_ptr<PluginModule> OpenPluginModule(vyncore::UString const& path, vyncore::UString& reason) {
    if (!vyncore::filesupport::Dir(path).Exists() && !vyncore::filesupport::File(path).Exists()) {
        reason = u"no such file";
        return nullptr;
    }
    if (vyncore::filesupport::Dir(path).Exists() || vst3::IsVST3Path(path))
        return vst3::OpenVST3Module(path, reason);
    return vst::OpenVSTModule(path, reason);
}

} // namespace vynaudiofilterhost
