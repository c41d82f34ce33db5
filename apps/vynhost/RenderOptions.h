#pragma once

#include "vynhost/RenderCommand.h"

namespace CLI {
class App;
}

/// Adds the command `render` to the command line. Parsing fills the request, which must outlive that; texts that are no
/// values of their options throw CommandError then.
/// [main-thread]
void DeclareRender(CLI::App& app, vynhost::RenderRequest& request);
