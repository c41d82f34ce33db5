#include "vyncore/config/UsageLoggerGroup.h"

namespace vyncore::config {

UsageLoggerGroup::UsageLoggerGroup() = default;

UsageLoggerGroup::~UsageLoggerGroup() = default;

} // namespace vyncore::config
