#pragma once

#include "vynhost/CommandError.h"

#include <exception>
#include <string>
#include <utility>

namespace vynhost {

/// Runs work in which plug-in code is called, and returns what it returns. Plug-ins throw what they like: that becomes
/// a CommandError with this status that names the module. CommandErrors pass.
/// [main-thread]
template <class Work>
decltype(auto) CallPlugin(ExitStatus status, std::string const& modulePath, Work const& work) {
    auto const fail = [&](std::string text) {
        throw CommandError(status, CommandError::Subject::kPlugin, modulePath, std::move(text));
    };
    try {
        return work();
    } catch (CommandError const&) {
        throw;
    } catch (std::exception const& error) {
        fail(error.what());
    } catch (char const* text) {
        fail(text ? text : "threw an exception");
    } catch (...) {
        fail("threw an exception");
    }
    std::terminate();
}

} // namespace vynhost
