#pragma once

#include "vynhost/EditCommand.h"

namespace CLI {
class App;
}

/// Adds the command `edit` to the command line. Parsing fills the request, which must outlive that; texts that are no
/// values of their options throw CommandError then.
/// [main-thread]
void DeclareEdit(CLI::App& app, vynhost::EditRequest& request);
