#include "apps/RandomScript.h"
#include "apps/ScriptFixture.h"
#include "vynhost/ScriptApplication.h"
#include "vynhost/ScriptHost.h"
#include "vynhost/Session.h"

#include "vynscripting/ScriptEngine.h"
#include "vynscripting/ScriptError.h"

#include <chrono>

using namespace vyntest;
using vynhost::ScriptRequest;

namespace {

TEST_F(ScriptTest, RecursionAndMemoryComeToAnEnd) {
    ScriptRequest request;
    request.memoryMiB = 16;
    request.timeoutSeconds = 60;
    for (BadScript const& bad : std::initializer_list<BadScript>{
             {"function f() { return f() + 1; }\nf()", "RangeError"},
             {"function f() { [1].forEach(f); }\nf()", "RangeError"},
             {"function f() { [2, 1].sort(f); }\nf()", "RangeError"},
             {"function f() { 'a'.replace(/a/, f); }\nf()", "RangeError"},
             {"var o = {toString: function () { return '' + o; }};\no + ''", "Error", 0},
             {"var o = {toJSON: function () { return JSON.stringify(o); }};\nJSON.stringify(o)", "Error", 0},
             {"var o = {get a() { return this.a; }};\no.a", "Error", 0},
             {"var o = {get a() { return print(o.a); }};\nfor (;;) o.a", "Error", 0},
             {"var s = '['; for (var i = 0; i < 20; ++i) s += s;\nJSON.parse(s)", "Error", 0},
             {"var a = []; for (var i = 0; i < 100000; ++i) a = [a];\nJSON.stringify(a)", "Error", 0},
             {"var s = '('; for (var i = 0; i < 16; ++i) s += s;\nnew RegExp(s)", "Error", 0},
             {"var s = '('; for (var i = 0; i < 16; ++i) s += s;\neval(s)", "Error", 0},
             {"var s = 'x';\nfor (;;) s += s", "16 MiB", 2},
             {"var a = [];\nfor (;;) a.push(a.slice())", "16 MiB", 2},
             {"new Uint8Array(1 << 30)", "16 MiB"},
             {"new Array(1 << 22).join('sixteen letters.')", "16 MiB"},
             {"var a = []; for (;;) a.push(filter.inputBuses)", "16 MiB"},
             {"for (;;) try { for (;;) s += s; } catch (e) { var s = 'x'; s += s; }", "0.3 seconds", 0},
         }) {
        if (bad.error == "0.3 seconds")
            request.timeoutSeconds = 0.3;
        ExpectError(bad, request);
    }
}

TEST_F(ScriptTest, TimeIsUpWhateverTheScriptCatches) {
    ScriptRequest request;
    request.timeoutSeconds = 0.2;
    for (BadScript const& bad : std::initializer_list<BadScript>{
             {"for (;;);", "did not come to an end within 0.2 seconds"},
             {"function f() { return f(); }\nf()", "within 0.2 seconds"},
             {"try { for (;;); } finally { for (;;); }", "within 0.2 seconds"},
             {"for (;;) try { for (;;); } catch (e) { }", "within 0.2 seconds"},
             {"[1].forEach(function () { for (;;); })", "within 0.2 seconds"},
             {"for (;;) filter.getParameter(0)", "within 0.2 seconds"},
             {"new Array(1e9).sort(function () { return 0; })", "", 0},
             {"/(a*)*(a*)*b/.exec(new Array(60).join('a'))", "Error", 0},
         })
        ExpectError(bad, request);
}

// One of them never gives the thread back while it is opened, one while it works.
TEST_F(ScriptTest, PluginThatDoesNotComeBackIsLeft) {
    mFolder.AddFile("open.js", "open(args[0])");
    mFolder.AddFile("render.js", "print('before'); " + RenderCall());
    auto const before = Names();
    std::string const hanging = vynfixtures::FixturePath("bad/sleep.vst3");
    std::string const script = mFolder.Path() / "open.js";
    std::string const report = script + ": ended because what the script called did not come back within 0.2 seconds";
    struct Case {
        std::vector<std::string> arguments;
        std::string trouble;
        std::string saying;
    };
    for (Case const& one : std::initializer_list<Case>{
             {{script, hanging, "--timeout", "0.2"}, "", "ended because the plug-in did not come back"},
             {{script, "--timeout", "0.2", "--", hanging}, "", report},
             {{mFolder.Path() / "render.js", VYNHOST_TROUBLE_EFFECT, "--timeout", "0.2"},
              "TROUBLE='hang in a block'",
              "did not come back within 0.2 seconds (--timeout)"}}) {
        std::vector<std::string> arguments{"script"};
        arguments.insert(arguments.end(), one.arguments.begin(), one.arguments.end());
        ProgramResult const result = RunVynhost(arguments, one.trouble);
        EXPECT_EQ(result.status, 1) << result.err;
        EXPECT_NE(result.err.find(one.saying), std::string::npos) << result.err;
        EXPECT_EQ(result.out, one.trouble.empty() ? "" : "before\n");
        EXPECT_EQ(Names(), before);
    }
}

// What the script left behind may take longer to collect than a run has time.
bool StillCounts(vynscripting::ScriptEngine& engine) {
    constexpr int kAttempts = 50;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        try {
            return std::get<int>(engine.Run("6 * 7", "again.js")) == 42;
        } catch (vynscripting::ScriptError const&) {
        }
    }
    return false;
}

// Ten thousand in all, in parts that a sanitizer comes to the end of.
class RandomScriptTest : public ScriptTest, public testing::WithParamInterface<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomScriptTest, testing::Values(1u, 2u, 3u, 4u));

TEST_P(RandomScriptTest, RandomScriptsDoNoHarm) {
    constexpr int kScripts = 2500;
    vynhost::Session const session;
    vynhost::ScriptHost host("random.js", {"argument"});
    RandomScript random(GetParam());
    int ended = 0;
    int failed = 0;
    for (int count = 0; count < kScripts; ++count) {
        if (!host.GetFilter())
            host.Open(mFixture.GetPath());
        std::string const source = random.Write();
        SCOPED_TRACE(source);
        auto const engine = vynscripting::ScriptEngine::Create({.memoryBytes = 8 << 20, .seconds = 0.02});
        engine->SetPrint([](std::string const&) {});
        vynhost::ScriptApplication::Enter(*engine, host);
        try {
            engine->Run(source, "random.js");
            ++ended;
        } catch (vynscripting::ScriptError const& error) {
            ++failed;
            ASSERT_EQ(error.GetFile().empty(), false);
        }
        ASSERT_TRUE(StillCounts(*engine));
    }
    EXPECT_GT(ended, kScripts / 10);
    EXPECT_GT(failed, kScripts / 10);
    RecordProperty("ended", ended);
    host.Close();
}

} // namespace
