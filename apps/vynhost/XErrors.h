#pragma once

#include <functional>
#include <string>

namespace vynhost {

/// Keeps the process alive through what goes wrong between anybody in it and an X server: the window system's library
/// ends the process otherwise, and plug-ins err. Plug-ins share the library, each with a connection of its own, so this
/// hears of all of them. At most one object at a time; it outlives all connections, those of plug-ins included,
/// which some close only when their modules are unloaded.
///
/// A request that the server refuses is counted, and the first is kept as a text. A connection that breaks can't be
/// used again: the host's own is marked as lost and its calls come back empty; nobody can say that of a plug-in's.
class XErrors {
public:
    /// @param foreignLoss  called when another connection than the host's breaks, on the thread that uses it, amidst
    ///                     the plug-in's code. The process ends with status 1 when it returns.
    /// [main-thread]
    explicit XErrors(std::function<void()> foreignLoss);
    XErrors(XErrors const&) = delete;
    XErrors& operator=(XErrors const&) = delete;
    /// Puts back what was there before.
    /// [main-thread]
    ~XErrors();

    /// Takes the handling back from a plug-in that has put its own in. Costs next to nothing.
    /// [main-thread]
    void Reclaim() noexcept;

    /// Names the host's own connection; null for none.
    /// [main-thread]
    void SetOwnConnection(void* display);

    /// Whether the host's own connection is broken.
    /// [main-thread]
    bool IsOwnConnectionLost() const noexcept;

    /// Whether any connection is broken.
    /// [any-thread]
    bool IsAnyConnectionLost() const noexcept;

    /// How many requests were refused so far.
    /// [any-thread]
    int GetCount() const noexcept;

    /// The first refusal in words, once; empty before it and afterwards.
    /// [main-thread]
    std::string TakeFirst();
};

} // namespace vynhost
