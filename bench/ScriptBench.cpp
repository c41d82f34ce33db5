// What a script's getParameter costs over an empty function that is bound the same way.
#include "Comparison.h"

#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/scripting/AudioFilterObject.h"
#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"
#include "vynscripting/ScriptEngine.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using namespace vynscripting;
using vynaudiofilterhost::AudioFilter;
using vynaudiofilterhost::AudioFilterObject;

constexpr int kCalls = 10'000;

class FilterOfOne : public AudioFilter {
public:
    FilterOfOne() : AudioFilter(u"one", u"One") {}
    float GetParameter(int) const override { return 0.5f; }
};

class EmptyObject : public ScriptObject {
public:
    EmptyObject() : ScriptObject(GetClassname()) {}
    static char const* GetClassname() { return "EmptyObject"; }
    static char const* GetDescription() { return "Does nothing."; }
    static void DefineObject() {
        using Item = definition::ScriptItemDefinition<EmptyObject>;
        definition::ScriptObjectDefinitionBase::sCurrent->AddProperty(
            Item::Method({"getParameter", "Nothing.", {"index"}}, &EmptyObject::GetParameter,
                         definition::ScriptItemFlags::kScriptable));
    }
    float GetParameter(int) const { return 0.5f; }
};

factory::ScriptObjectDefinitionRegistrar const theRegistrar([](definition::ScriptDefinitions& definitions) {
    definitions.AddObjectDefinition(EmptyObject::GetClassname(),
                                    std::make_unique<definition::ScriptObjectDefinition<EmptyObject>>());
});

// A turn runs the loop once, so that a figure is of kCalls calls.
void RunLoop(benchmark::State& state, ScriptEngine& engine, std::string const& call) {
    std::string const source =
        "(function () { for (var i = 0; i < " + std::to_string(kCalls) + "; ++i) " + call + "; })()";
    for (auto _ : state)
        engine.Run(source, "bench");
}

} // namespace

int main(int argc, char** argv) {
    vynaudiofilterhost::Initialize(true);
    bool kept = false;
    {
        boost::intrusive_ptr<AudioFilter> const filter(new FilterOfOne);
        auto const engine = ScriptEngine::Create({});
        auto const& context = engine->GetContextHdl();
        auto const provide = [&](ScriptObject& object) {
            dynamic_cast<AudioFilterObject&>(object).Initialize([&] { return filter; });
        };
        engine->SetGlobal("filter", utils::CreateScriptObject(context, AudioFilterObject::GetClassname(), provide));
        engine->SetGlobal("nothing", utils::CreateScriptObject(context, EmptyObject::GetClassname(), nullptr));
        benchmark::RegisterBenchmark("filter", [&](auto& state) { RunLoop(state, *engine, "filter.getParameter(0)"); });
        benchmark::RegisterBenchmark("empty", [&](auto& state) { RunLoop(state, *engine, "nothing.getParameter(0)"); });
        vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
        double const called = medians["filter"] / kCalls;
        double const empty = medians["empty"] / kCalls;
        std::printf("getParameter from a script %.0f ns, an empty function %.0f ns\n", called, empty);
        kept = vynbench::Report("getParameter from a script over an empty function", called - empty, 1000.0, "ns");
    }
    vynaudiofilterhost::Terminate();
    return kept ? 0 : 1;
}
