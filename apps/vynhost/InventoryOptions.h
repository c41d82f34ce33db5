#pragma once

#include "vynhost/BanCommand.h"
#include "vynhost/ConfigCommand.h"
#include "vynhost/DirsCommand.h"
#include "vynhost/ScanCommand.h"
#include "vynhost/ScanWorker.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace vynhost {

/// What the user asks of the commands that look for plug-ins and keep what is known of them.
struct InventoryRequests {
    ScanRequest scan;
    bool listAsJSON = false;
    BanRequest ban;
    DirsRequest dirs;
    ConfigRequest config;
    ScanWorkerRequest worker;
};

/// Adds these commands to the command line. Parsing fills the requests, which must outlive that.
/// [main-thread]
void DeclareInventory(CLI::App& app, InventoryRequests& requests);

/// Runs the one of these commands that was asked for, and returns the text to be printed; empty when it was none.
/// Throws CommandError.
/// [main-thread]
std::optional<std::string> RunInventory(CLI::App const& app, InventoryRequests const& requests);

} // namespace vynhost
