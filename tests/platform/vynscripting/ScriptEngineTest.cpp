#include "vynscripting/ScriptEngine.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"
#include "vynscripting/ScriptError.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include "vyncore/threads/MainThreadCalls.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace vynscripting;
using definition::ScriptDefinitions;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using vyncore::UString;
using Objects = std::vector<ScriptObjectPtr>;

// Gives back what it gets, and runs what the test wants inside of a call.
class Probe : public ScriptObject {
public:
    Probe() : ScriptObject(GetClassname()) { ++alive; }
    ~Probe() override { --alive; }

    static char const* GetClassname() { return "Probe"; }
    static char const* GetDescription() { return "Gives back what it gets."; }
    static void DefineObject();

    UString Text(UString const& text) { return last = text; }
    double Number(double number) { return number; }
    int Whole(int number) { return number; }
    bool Flag(bool flag) { return flag; }
    std::vector<UString> Texts(std::vector<UString> const& texts) { return texts; }
    Objects List(Objects const& objects) { return objects; }
    ScriptObjectPtr Same(ScriptObjectPtr const& object) { return object; }
    ScriptObjectPtr Fresh() { return utils::CreateScriptObject(GetContextHdl(), "Probe", {}); }
    int Later(int number) { return number < 0 ? throw std::runtime_error("is negative") : number; }
    void Act() { action(); }
    int Hidden() { return 1; }

    static inline int alive = 0;
    std::function<void()> action;
    UString last;
};

void Probe::DefineObject() {
    using Item = definition::ScriptItemDefinition<Probe>;
    using namespace definition::ScriptItemFlags;
    auto& current = *definition::ScriptObjectDefinitionBase::sCurrent;
    current.AddOrModifyNamespace("vyntest", 0);
    current.AddOrModifyNamespace("Probe", definition::ScriptObjectDefinitionBase::kNamespaceIsClass);
    current.AddProperty(Item::Method({"text", "", {"text"}}, &Probe::Text, kScriptable));
    current.AddProperty(Item::Method({"number", "", {"number"}}, &Probe::Number, kScriptable));
    current.AddProperty(Item::Method({"whole", "", {"number"}}, &Probe::Whole, kScriptable));
    current.AddProperty(Item::Method({"flag", "", {"flag"}}, &Probe::Flag, kScriptable));
    current.AddProperty(Item::Method({"texts", "", {"texts"}}, &Probe::Texts, kScriptable));
    current.AddProperty(Item::Method({"list", "", {"objects"}}, &Probe::List, kScriptable));
    current.AddProperty(Item::Method({"same", "", {"object"}}, &Probe::Same, kScriptable));
    current.AddProperty(Item::Property({"fresh", ""}, &Probe::Fresh, kScriptable));
    current.AddProperty(Item::Method({"later", "", {"number"}}, &Probe::Later, kScriptable | 0x200000));
    current.AddProperty(Item::Method({"act", ""}, &Probe::Act, kScriptable));
    current.AddProperty(Item::Property({"hidden", ""}, &Probe::Hidden, 0));
}

factory::ScriptObjectDefinitionRegistrar const theRegistrar([](ScriptDefinitions& all) {
    all.AddObjectDefinition("Probe", std::make_unique<definition::ScriptObjectDefinition<Probe>>());
});

class ScriptEngineTest : public testing::Test {
protected:
    explicit ScriptEngineTest(ScriptLimits const& limits = {}) : engine(ScriptEngine::Create(limits)) {
        engine->SetPrint([this](std::string const& line) { printed.push_back(line); });
        engine->SetGlobal("probe", ScriptObjectPtr(probe));
        probe->SetContext(engine->GetContextHdl());
    }

    // What the script fails with, as "file:line: text"; empty when it doesn't.
    std::string Fail(std::string const& source) {
        try {
            engine->Run(source, "test.js");
            return {};
        } catch (ScriptError const& error) {
            stack = error.GetStack();
            return error.GetFile() + ":" + std::to_string(error.GetLine()) + ": " + error.what();
        }
    }

    std::string Eval(std::string const& source) {
        printed.clear();
        engine->Run("print(" + source + ")", "test.js");
        return printed.at(0);
    }

    boost::intrusive_ptr<Probe> const probe{new Probe};
    std::vector<std::string> printed;
    std::string stack;
    std::unique_ptr<ScriptEngine> engine;
};

TEST_F(ScriptEngineTest, ValuesComeBackAsTheyWent) {
    EXPECT_EQ(Eval("probe.text('a\\u00e4\\u20ac\\ud83d\\ude00\\u0000z').length"), "7");
    EXPECT_EQ(probe->last, (UString{u'a', u'ä', u'€', 0xD83D, 0xDE00, 0, u'z'}));
    EXPECT_EQ(Eval("probe.text('\\ud83d') === '\\ud83d', '\\ud83d', '😀', probe.text('😀')"), "true \xEF\xBF\xBD 😀 😀");
    EXPECT_EQ(Eval("probe.number(0.1), probe.number(-Infinity), probe.whole(-2147483648), probe.flag(true)"),
              "0.1 -Infinity -2147483648 true");
    EXPECT_EQ(Eval("probe.texts(['x', '']), probe.texts([]).length, probe.act.name"), "x, 0 act");
    EXPECT_EQ(Eval("probe.list([probe, probe.fresh]).length, isEqual(probe, probe.same(probe)), probe.hidden"),
              "2 true undefined");
    EXPECT_EQ(Eval("probe, probe instanceof vyntest.Probe, typeof Duktape, typeof CBOR"),
              "[object Probe] true undefined undefined");
    EXPECT_EQ(std::get<int>(engine->Run("#!/usr/bin/env vynhost\n40 + 2", "f")), 42);
    EXPECT_EQ(std::get<double>(engine->Run("\xEF\xBB\xBF"
                                           "0.5",
                                           "f")),
              0.5);
    EXPECT_EQ(std::get<ScriptObjectPtr>(engine->Run("probe", "f")), probe);
    EXPECT_EQ(engine->Run("[1]", "f"), ScriptValue());
}

TEST_F(ScriptEngineTest, WrongCallsAreErrorsWithTheirPlace) {
    struct {
        char const* call;
        char const* error;
    } const rows[] = {
        {"probe.text()", "TypeError: Probe.text takes 1 (text) and was given 0"},
        {"probe.act(1)", "TypeError: Probe.act takes no arguments and was given 1"},
        {"probe.text(1)", "TypeError: Probe.text was given a wrong 'text': it takes a string and not a number"},
        {"probe.text(Symbol('x'))",
         "TypeError: Probe.text was given a wrong 'text': it takes a string and not a symbol"},
        {"probe.flag(0)", "TypeError: Probe.flag was given a wrong 'flag': it takes true or false and not a number"},
        {"probe.number(NaN)", "RangeError: Probe.number was given a wrong 'number': NaN is no value of it"},
        {"probe.whole(0.5)", "RangeError: Probe.whole was given a wrong 'number': it takes a whole number of 32 bits"},
        {"probe.whole(2147483648)", "RangeError: Probe.whole was given a wrong 'number'"},
        {"probe.texts(['a', 1])", "TypeError: Probe.texts was given a wrong 'texts': element 1 is no string"},
        {"probe.list({length: 1})",
         "TypeError: Probe.list was given a wrong 'objects': it takes an array and not an object"},
        {"probe.list([{}])", "TypeError: Probe.list was given a wrong 'objects': element 0 is no object of the host"},
        {"probe.list(new Array(4294967295))",
         "RangeError: Probe.list was given a wrong 'objects': the array is too long"},
        {"probe.same(null)",
         "TypeError: Probe.same was given a wrong 'object': it takes an object of the host and not null"},
        {"probe.act.call({})", "TypeError: Probe.act was used on what is no object of that class"},
        {"Object.create(probe).act()", "TypeError: Probe.act was used on what is no object of that class"},
        {"new vyntest.Probe()", "TypeError: objects of this class are made by the host alone"},
        {"eval('\\n\\nprobe.text()')", "TypeError: Probe.text takes 1"},
        {"throw 5", "threw 5"},
        {"]", "SyntaxError: "},
    };
    for (auto const& row : rows)
        EXPECT_THAT(Fail("\n\n" + std::string(row.call)), StartsWith("test.js:3: " + std::string(row.error)))
            << row.call;
    EXPECT_THAT(Fail("1;\n'\xFF'"), StartsWith("test.js:2: SyntaxError: the script is not UTF-8"));
    EXPECT_THAT(Fail("function f() {\nprobe.text() }\nf()"), StartsWith("test.js:2: "));
    EXPECT_EQ(stack, "text (native)\nf (test.js:2)\neval (test.js:3)");
}

TEST_F(ScriptEngineTest, WhatTheHostThrowsIsAnErrorOfTheScript) {
    probe->action = [] { throw std::runtime_error("broken"); };
    EXPECT_EQ(Fail("probe.act()"), "test.js:1: Error: Probe.act failed: broken");
    probe->action = [] { throw "a text"; };
    EXPECT_EQ(Eval("(function() { try { probe.act() } catch (e) { return e.message } })()"),
              "Probe.act failed: a text");
    probe->action = [&] { engine->Run("1", "inner"); };
    EXPECT_THAT(Fail("probe.act()"), HasSubstr("one script at a time"));
    ScriptObjectPtr const undefined(new ScriptObject("Unknown"));
    EXPECT_THROW(engine->SetGlobal("unknown", undefined), ScriptError);
    EXPECT_EQ(Eval("1"), "1");
}

TEST_F(ScriptEngineTest, ObjectsLiveAsLongAsAScriptHoldsThem) {
    Eval("(kept = probe.fresh, probe.fresh, 0)");
    EXPECT_EQ(Probe::alive, 2);
    Eval("(delete kept)");
    EXPECT_EQ(Probe::alive, 1);
    Eval("(Object.setPrototypeOf(probe.fresh, null), 0)");
    EXPECT_EQ(Probe::alive, 1);
    Eval("(kept = [probe.fresh], kept.push(kept), Object.create(kept[0]) && 0)");
    EXPECT_EQ(Probe::alive, 2);
    engine.reset();
    EXPECT_EQ(Probe::alive, 1);
    EXPECT_EQ(probe->GetReferenceCount(), 1);
}

TEST_F(ScriptEngineTest, PromisesAreSettledWhenTheMainThreadHasRunTheCall) {
    engine->GetContextHdl()->SetFlags(ScriptContext::kAsynchronousCalls);
    engine->Run("probe.later(3).then(print); var p = probe.later(4); probe.later(-1).then(print, print)", "test.js");
    EXPECT_TRUE(engine->HasPromises());
    engine->SettlePromises();
    EXPECT_THAT(printed, ElementsAre());
    vyncore::threads::RunDueCalls();
    engine->SettlePromises();
    EXPECT_THAT(printed, ElementsAre("3", "later: is negative"));
    EXPECT_FALSE(engine->HasPromises());
    engine->Run("p.then(function(n) { print(n); probe.later(-1) })", "test.js");
    engine->SettlePromises();
    EXPECT_EQ(printed.back(), "4");
    vyncore::threads::RunDueCalls();
    EXPECT_THROW(engine->SettlePromises(), ScriptError);
    EXPECT_FALSE(engine->HasPromises());
}

TEST_F(ScriptEngineTest, GlobalItemsNeedNoObjectAndGiveWayToTheScript) {
    engine->SetGlobalItems(probe);
    EXPECT_EQ(Eval("whole(7), text('x')"), "7 x");
    EXPECT_EQ(Eval("(function() { var whole = 1; return whole })()"), "1");
    EXPECT_EQ(Fail("function whole() { return 2 }\nprint(whole())"), "");
    EXPECT_EQ(printed.back(), "2");
}

class ScriptLimitTest : public ScriptEngineTest {
protected:
    explicit ScriptLimitTest(double seconds = 60.0)
        : ScriptEngineTest({.memoryBytes = 4 << 20, .stackBytes = 256 << 10, .seconds = seconds}) {}

    void ExpectEnd(std::vector<char const*> const& scripts, std::string const& error) {
        for (char const* const script : scripts) {
            EXPECT_EQ(Fail(script), "test.js:1: RangeError: " + error) << script;
            EXPECT_EQ(Fail("a = s = o = null; probe.text('still here')"), "");
        }
    }
};

class ScriptTimeLimitTest : public ScriptLimitTest {
protected:
    ScriptTimeLimitTest() : ScriptLimitTest(0.2) {}
};

TEST_F(ScriptLimitTest, MemoryAndStackEndScriptsAndTheEngineGoesOn) {
    ExpectEnd(
        {"var a = []; for (;;) a.push({})", "var s = 'x'; for (;;) s += s", "var a = []; for (;;) a.push(probe.fresh)"},
        "the script needs more than 4 MiB of memory");
    ExpectEnd({"(function f() { [1].forEach(f) })()", "RegExp(Array(100000).join('('))",
               "var o = {}; o.toString = function() { return '' + o }; '' + o"},
              "C stack depth limit");
    ExpectEnd({"(function f() { return f() + 1 })()"}, "callstack limit");
}

TEST_F(ScriptTimeLimitTest, TimeEndsScriptsWhateverTheyCatch) {
    ExpectEnd({"for (;;);", "try { for (;;); } catch (e) { for (;;); } finally { for (;;); }",
               "/(a+)+b/.test('aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaac')", "new Array(4294967295).join('x')",
               "throw {get stack() { for (;;); }, toString: function() { for (;;); }}"},
              "the script did not come to an end within 0.2 seconds");
}

} // namespace
