// The interface headers declare the run loop on Linux alone.
#include "pluginterfaces/gui/iplugview.h"

namespace Steinberg::Linux {

DEF_CLASS_IID(IEventHandler)
DEF_CLASS_IID(IRunLoop)
DEF_CLASS_IID(ITimerHandler)

} // namespace Steinberg::Linux
