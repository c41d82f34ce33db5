#pragma once

#include "plugins/VSTFixtureCall.h"

#include <string>

namespace vynfixtures {

/// The name of an effect opcode or of a VSTFixtureOpcode, such as "effOpen", "VSTPluginMain", "processReplacing"; the
/// number of one that this host has no business to send.
/// [any-thread]
std::string VSTOpcodeName(std::int32_t opcode);

/// A call as text, "effSetBlockSize(0, 2048, null, 0)": index, value, whether there is a pointer, opt. A value that is
/// a pointer itself is shown like one.
/// [any-thread]
std::string VSTCallText(VSTFixtureCall const& call);

/// Whether the opcode is one that the host may send, with the arguments that belong to it.
/// [any-thread]
bool IsWellFormed(VSTFixtureCall const& call);

} // namespace vynfixtures
