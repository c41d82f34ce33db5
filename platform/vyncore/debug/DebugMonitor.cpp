#include "vyncore/debug/DebugMonitor.h"

#include "vyncore/strings/StringUtils.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace vyncore::debug {
namespace {

struct MonitorTable {
    // Held while a callback runs, so that unregistering waits for it; recursive, because a callback may register.
    std::recursive_mutex mutex;
    std::map<std::string, DebugMonitorCallback> callbacks;
};

// Never destroyed: singletons that are unregister their monitors at the end of the process.
MonitorTable& Table() {
    static MonitorTable& table = *new MonitorTable;
    return table;
}

std::vector<std::string> Names(MonitorTable const& table) {
    std::vector<std::string> names;
    for (auto const& entry : table.callbacks)
        names.push_back(entry.first);
    return names;
}

UString RenderOne(DebugMonitorCallback const& callback) {
    UTF16StringStream stream;
    try {
        callback(stream);
    } catch (...) {
        stream << "failed";
    }
    return stream.str();
}

} // namespace

void RegisterDebugMonitorCallback(char const* name, DebugMonitorCallback callback) {
    if (!name || !callback)
        return;
    std::lock_guard const lock(Table().mutex);
    Table().callbacks.insert_or_assign(name, std::move(callback));
}

void UnregisterDebugMonitorCallback(char const* name) {
    if (!name)
        return;
    std::lock_guard const lock(Table().mutex);
    Table().callbacks.erase(name);
}

UString RenderDebugMonitors() {
    MonitorTable& table = Table();
    std::lock_guard const lock(table.mutex);
    UString text;
    for (std::string const& name : Names(table)) {
        auto const found = table.callbacks.find(name);
        if (found == table.callbacks.end())
            continue;
        // A copy, since the callback may take itself out.
        DebugMonitorCallback const callback = found->second;
        text += string::UTF8to16(name) + u"\n" + RenderOne(callback) + u"\n";
    }
    return text;
}

} // namespace vyncore::debug
