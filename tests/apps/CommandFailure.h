#pragma once

#include "vynhost/CommandError.h"

#include <string>

namespace vyntest {

/// The exit status and the text of the CommandError that work ends with, such as "2 not expected"; "none" without one.
/// [any-thread]
template <class Work>
std::string FailureOf(Work const& work) {
    try {
        work();
    } catch (vynhost::CommandError const& error) {
        return std::to_string(static_cast<int>(error.GetStatus())) + ' ' + error.what();
    }
    return "none";
}

} // namespace vyntest
