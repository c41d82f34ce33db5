#pragma once

#include "vynhost/ParameterFacts.h"

#include <string>
#include <vector>

namespace vynhost {

/// One JSON document, with a line break behind it. A number that is none is null.
/// [any-thread]
std::string FormatJSON(std::vector<ParameterFacts> const& parameters);

/// A table for a person, a row for each parameter, under a title. A parameter that is hidden and not automatable is
/// called internal there.
/// [any-thread]
std::string FormatTable(std::string const& title, std::vector<ParameterFacts> const& parameters);

/// The parameter's present value as that table has it, with its unit.
/// [any-thread]
std::string ValueText(ParameterFacts const& facts);

} // namespace vynhost
