#pragma once

namespace vynhost {

/// The library's life in this program: started with the object, ended with it. The thread that makes it is the main
/// thread. Modules and filters must have gone before it does.
class Session {
public:
    /// [main-thread]
    Session();
    Session(Session const&) = delete;
    Session& operator=(Session const&) = delete;
    /// [main-thread]
    ~Session();

    /// One turn of the main thread's loop: runs the calls that the library has filed and that are due. To be called
    /// often, also in the middle of long work, since plug-ins' timers and messages come this way.
    /// [main-thread]
    static void RunDueCalls();
};

} // namespace vynhost
