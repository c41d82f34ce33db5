#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace vynhost {

/// The text of a document, with a line break behind it. File names that are no UTF-8 get replacement characters.
/// [any-thread]
inline std::string ToText(nlohmann::ordered_json const& document) {
    return document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

/// The same in one line.
/// [any-thread]
inline std::string ToLine(nlohmann::ordered_json const& document) {
    return document.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

} // namespace vynhost
