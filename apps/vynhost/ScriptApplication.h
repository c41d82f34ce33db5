#pragma once

#include "vynscripting/ScriptEngine.h"
#include "vynscripting/ScriptObject.h"

#include <vector>

namespace vynhost {

class ScriptHost;

/// The application, as scripts see it: its items are the global variables and functions of a script.
class ScriptApplication : public vynscripting::ScriptObject {
public:
    ScriptApplication();

    /// Adds the items to the definition that is being built.
    /// [main-thread]
    static void DefineObject();

    /// [any-thread]
    static char const* GetClassname() noexcept { return "Application"; }
    static char const* GetDescription() noexcept {
        return "The application itself: its items are global variables and functions.";
    }

    /// Makes an application over the host, and its items global.
    /// @param host  must outlive the engine
    /// [main-thread]
    static void Enter(vynscripting::ScriptEngine& engine, ScriptHost& host);

private:
    using UString = vyncore::UString;
    using Objects = std::vector<vynscripting::ScriptObjectPtr>;

    void Initialize(ScriptHost& host);
    ScriptHost& GetHost() const;
    vynscripting::ScriptObjectPtr GetFilterObject();
    std::vector<UString> GetArguments() const;
    Objects GetCatalogue();
    void Open(UString const& plugin);
    void Close();
    vynscripting::ScriptObjectPtr Render(UString const& inPath, UString const& outPath);
    vynscripting::ScriptObjectPtr CreateBus(UString const& type, UString const& layout) const;
    UString GetParameterName(int index) const;
    int FindParameter(UString const& name) const;
    UString GetParameterText(int index) const;

    ScriptHost* mHost = nullptr;
    vynscripting::ScriptObjectPtr mFilter; ///< null before Initialize
    Objects mCatalogue;                    ///< empty until it is asked for
};

} // namespace vynhost
