#include "vyncore/config/UsageLogger.h"

#include <utility>

namespace vyncore::config {

namespace {

// Never destroyed by itself: an application's code may have gone before the statics of this library go.
std::shared_ptr<UsageLogger>& TheLogger() {
    static auto& logger = *new std::shared_ptr<UsageLogger>;
    return logger;
}

} // namespace

UsageLogger::UsageLogger() = default;

UsageLogger::~UsageLogger() = default;

std::shared_ptr<UsageLogger> UsageLogger::Get() {
    return TheLogger();
}

void UsageLogger::Set(std::shared_ptr<UsageLogger> logger) {
    // The former one goes when this one is in its place: its end may ask for the present one.
    TheLogger().swap(logger);
}

} // namespace vyncore::config
