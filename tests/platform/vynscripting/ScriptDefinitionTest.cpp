#include "support/CallLoop.h"
#include "support/ScriptItems.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"
#include "vynscripting/InternalErrorException.h"
#include "vynscripting/threads/UIThreadCalls.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <thread>

namespace {

using namespace vynscripting;
using namespace vyntest;
using definition::ScriptDefinitions;
using definition::ScriptItem;
using definition::ScriptObjectDefinitionBase;
using factory::ScriptObjectDefinitionRegistrar;
using testing::ElementsAre;
using vyncore::UString;
using Objects = std::vector<ScriptObjectPtr>;
using Promise = boost::intrusive_ptr<NativePromise>;

// Counts, with an item for each way of being called.
class Counter : public ScriptObject {
public:
    Counter() : ScriptObject(GetClassname()) {}

    static char const* GetClassname() { return "Counter"; }
    static char const* GetDescription() { return "Counts."; }
    static void DefineObject();

    int GetValue() const { return value; }
    int Add(int amount) {
        runner = std::this_thread::get_id();
        return value += amount;
    }
    void Fail() { throw ParameterErrorException(); }
    float Scale(float factor) const { return factor; }
    ScriptObjectPtr Same(ScriptObjectPtr const& object) const { return object; }
    std::vector<UString> Texts(bool, UString const& text, std::vector<UString> const& texts, Objects const&) const {
        std::vector<UString> all = texts;
        all.push_back(text);
        return all;
    }

    int value = 0;
    std::thread::id runner;
};

using Definition = definition::ScriptObjectDefinition<Counter>;
using Item = definition::ScriptItemDefinition<Counter>;

void Counter::DefineObject() {
    auto& current = *ScriptObjectDefinitionBase::sCurrent;
    current.AddOrModifyNamespace("outer", 0);
    current.AddOrModifyNamespace("Counter", 0);
    current.AddOrModifyNamespace("outer", 1);
    current.AddProperty(Item::Property({"value", "Old."}, &Counter::GetValue, 0));
    current.AddProperty(Item::Method({"add", "Adds.", {"amount"}}, &Counter::Add, 0x100000));
    current.AddProperty(Item::Method({"addLater", "Adds.", {"amount"}}, &Counter::Add, 0x200000));
    current.AddProperty(Item::Method({"addOnMain", "Adds.", {"amount"}}, &Counter::Add, 0x400000));
    current.AddProperty(Item::Method({"fail", "Fails."}, &Counter::Fail, 0x400000));
    current.AddProperty(Item::Method({"scale", "A float.", {"factor"}}, &Counter::Scale, 0));
    current.AddProperty(Item::Method({"same", "An object.", {"object"}}, &Counter::Same, 0));
    current.AddProperty(Item::Method({"texts", "All else.", {"flag", "text", "texts", "objects"}}, &Counter::Texts, 0));
    current.AddProperty(nullptr);
    current.AddProperty(Item::Property({"value", "The count."}, &Counter::GetValue, 0));
}

ScriptObjectDefinitionRegistrar const theRegistrar([](ScriptDefinitions& all) {
    all.AddObjectDefinition("Counter", std::make_unique<Definition>());
});

boost::intrusive_ptr<Counter> MakeCounter(unsigned flags = 0) {
    ScriptContextHdl const context(new ScriptContext);
    context->SetFlags(flags);
    return boost::dynamic_pointer_cast<Counter>(utils::CreateScriptObject(context, "Counter", nullptr));
}

TEST(ScriptDefinitionTest, ADefinitionHoldsWhatItsClassAdds) {
    auto const* const counter = ScriptDefinitions::Get().Find("Counter");
    ASSERT_TRUE(counter);
    EXPECT_FALSE(ScriptObjectDefinitionBase::sCurrent);
    EXPECT_EQ(counter->GetDescription(), "Counts.");
    ASSERT_EQ(counter->GetNamespaces().size(), 2u);
    EXPECT_EQ(counter->GetNamespaces()[0].name, "outer");
    EXPECT_EQ(counter->GetNamespaces()[0].flags, 1u) << "the later flags count";
    EXPECT_THAT(InterfaceOf(*counter),
                ElementsAre("value: int | The count.", "add(amount int): int | Adds.",
                            "addLater(amount int): int | Adds.", "addOnMain(amount int): int | Adds.",
                            "fail(): void | Fails.", "scale(factor float): float | A float.",
                            "same(object object): object | An object.",
                            "texts(flag bool, text string, texts string[], objects object[]): string[] | All else."));
    EXPECT_THROW(Item::Method({"add", "Adds."}, &Counter::Add, 0), std::invalid_argument);
}

TEST(ScriptDefinitionTest, ClassesAreEnteredWhenTheyAreAskedForNext) {
    auto const* const counter = ScriptDefinitions::Get().Find("Counter");
    static std::string name;
    name += "Late"; // Definitions stay: a test that is repeated needs another name.
    auto const enter = [](ScriptDefinitions& all) {
        all.AddObjectDefinition(name.c_str(), std::make_unique<Definition>());
        all.AddObjectDefinition("Counter", std::make_unique<Definition>());
        all.AddObjectDefinition("None", nullptr);
    };
    { ScriptObjectDefinitionRegistrar const forgotten(enter); }
    EXPECT_FALSE(ScriptDefinitions::Get().Find(name)) << "its library has gone before anybody asked";
    EXPECT_THROW(utils::CreateScriptObject(nullptr, name, nullptr), InternalErrorException);
    ScriptObjectDefinitionRegistrar const late(enter);
    auto const* const entered = ScriptDefinitions::Get().Find(name);
    ASSERT_TRUE(entered);
    EXPECT_EQ(entered->GetItems().size(), 8u);
    EXPECT_EQ(ScriptDefinitions::Get().Find("Counter"), counter) << "the first of a name stays";
    EXPECT_FALSE(ScriptDefinitions::Get().Find("None"));
}

TEST(ScriptDefinitionTest, NewObjectsAreReadyForTheirContext) {
    ScriptContextHdl const context(new ScriptContext);
    bool ready = false;
    auto const object = utils::CreateScriptObject(context, "Counter", [&](ScriptObject& made) {
        ready = made.IsFinalized() && made.GetContextHdl() == context && made.GetDefinition();
    });
    EXPECT_TRUE(ready);
    EXPECT_TRUE(object->IsEqual(MakeCounter())) << "objects of one class are, unless the class knows better";
    EXPECT_FALSE(object->IsEqual(new ScriptObject("Other")));
    EXPECT_FALSE(object->IsEqual(nullptr));
}

TEST(ScriptItemTest, ArgumentsAndObjectsThatDoNotFitAreRefused) {
    auto const counter = MakeCounter();
    struct {
        char const* item;
        Arguments arguments;
    } const cases[] = {
        {"add", {}},           {"add", {1, 2}},          {"add", {1.0}},
        {"add", {true}},       {"add", {ScriptValue()}}, {"scale", {1}},
        {"same", {Objects()}}, {"value", {1}},           {"texts", {true, UString(), Objects(), Objects()}}};
    for (auto const& [item, arguments] : cases)
        EXPECT_THROW(CallItem(counter, item, arguments), ParameterErrorException) << item;
    ScriptObject stranger("Counter");
    EXPECT_THROW(CallItem(*counter->GetDefinition(), stranger, "value"), ParameterErrorException);
    EXPECT_EQ(counter->value, 0);
}

TEST(ScriptItemTest, ValuesComeBackAsTheyWent) {
    auto const counter = MakeCounter();
    EXPECT_EQ(CallItem(counter, "add", {-5}), ScriptValue(-5));
    EXPECT_EQ(counter->runner, std::this_thread::get_id());
    EXPECT_EQ(CallItem(counter, "scale", {0.1}), ScriptValue(static_cast<double>(0.1f)));
    EXPECT_TRUE(std::isinf(std::get<double>(CallItem(counter, "scale", {-1e300}))));
    EXPECT_EQ(CallItem(counter, "same", {ScriptObjectPtr(counter)}), ScriptValue(ScriptObjectPtr(counter)));
    EXPECT_EQ(CallItem(counter, "texts", {true, UString(u"b"), std::vector<UString>{u"a"}, Objects()}),
              ScriptValue(std::vector<UString>{u"a", u"b"}));
}

TEST(ScriptItemTest, AsynchronousCallsGiveAPromise) {
    auto counter = MakeCounter(ScriptContext::kAsynchronousCalls);
    EXPECT_EQ(CallItem(counter, "add", {1}), ScriptValue(1)) << "the item has no flag for it";
    auto const later = std::get<Promise>(CallItem(counter, "addLater", {2}));
    auto const onMain = std::get<Promise>(CallItem(counter, "addOnMain", {3}));
    auto const failed = std::get<Promise>(CallItem(counter, "fail"));
    EXPECT_EQ(later->GetState(), NativePromise::State::kPending);
    counter = nullptr;
    RunCallsUntil([&] { return failed->GetState() != NativePromise::State::kPending; });
    EXPECT_EQ(later->GetValue(), ScriptValue(3));
    EXPECT_EQ(onMain->GetValue(), ScriptValue(6));
    EXPECT_EQ(failed->GetState(), NativePromise::State::kRejected);
    EXPECT_EQ(failed->GetReason(), "fail: parameter error");
    failed->Resolve(1);
    EXPECT_EQ(failed->GetState(), NativePromise::State::kRejected) << "a promise is settled once";
    EXPECT_EQ(CallItem(MakeCounter(), "addLater", {2}), ScriptValue(2)) << "the context has no flag for it";
}

TEST(ScriptItemTest, ItemsOfTheMainThreadRunThere) {
    threads::SetUIThreadToCurrentThread();
    auto const counter = MakeCounter();
    EXPECT_EQ(CallItem(counter, "addOnMain", {1}), ScriptValue(1)) << "at once on that thread itself";
    ScriptValue result;
    bool threw = false;
    bool done = false;
    std::thread script([&] {
        result = CallItem(counter, "addOnMain", {2});
        try {
            CallItem(counter, "fail");
        } catch (ParameterErrorException const&) {
            threw = true;
        }
        vyncore::threads::AsyncCallFromMainThread([&] { done = true; }, 0);
    });
    EXPECT_TRUE(RunCallsUntil([&] { return done; }));
    script.join();
    EXPECT_EQ(result, ScriptValue(3));
    EXPECT_EQ(counter->runner, std::this_thread::get_id());
    EXPECT_TRUE(threw) << "what an item throws reaches its caller";
}

TEST(ScriptItemTest, ACallThatTheMainThreadDoesNotTakeInTimeIsNeverMade) {
    threads::SetUIThreadToCurrentThread();
    auto const counter = MakeCounter();
    unsigned const before = threads::GetSynchronousTimeout();
    threads::SetSynchronousTimeout(1);
    std::thread([&] { EXPECT_THROW(CallItem(counter, "addOnMain", {1}), InternalErrorException); }).join();
    threads::SetSynchronousTimeout(before);
    RunCallsFor(0);
    EXPECT_EQ(counter->value, 0);
    EXPECT_EQ(threads::CallFunctionOnUIThread([] { return 7; }, 1), 7);
}

} // namespace
