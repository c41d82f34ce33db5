#pragma once

#include <string_view>

namespace vynaudiofilterhost::vst {

/// Whether an effect's question of what the host can do is this one, the case of letters apart.
/// [any-thread]
bool IsQuestion(std::string_view question, std::string_view known);

} // namespace vynaudiofilterhost::vst
