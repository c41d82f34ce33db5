#pragma once

#include "os/ChildProcess.h"

#include <optional>
#include <string>

namespace vyntest {

/// An X server without a screen of its own, with one screen of 1280 by 1024 pixels, 24 bits deep, on a display that was
/// free. The test owns it; it ends with the object.
/// [main-thread]
class VirtualDisplay {
public:
    /// Starts the server and waits until it takes connections. Without the program there is none to be had.
    VirtualDisplay();
    VirtualDisplay(VirtualDisplay const&) = delete;
    VirtualDisplay& operator=(VirtualDisplay const&) = delete;
    ~VirtualDisplay();

    /// For the environment variable DISPLAY; empty when there is no server.
    std::string const& GetName() const noexcept { return mName; }

    /// Ends the server at once, whoever is connected.
    void Kill();

private:
    std::optional<os::ChildProcess> mServer;
    std::string mName;
};

} // namespace vyntest
