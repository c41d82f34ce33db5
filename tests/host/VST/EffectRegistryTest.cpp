#include "FilterFixture.h"

#include "vynaudiofilterhost/VST/src/EditorCallbacks.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vynaudiofilterhost/VST/src/StaticAudioMasterCallback.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace {

using namespace vyntest;

constexpr std::int32_t kQuestion = 1000;

EffectCallback Answering(std::intptr_t answer) {
    return [answer](std::int32_t, std::int32_t, std::intptr_t, void*, float) { return answer; };
}

std::optional<std::intptr_t> Ask(AEffect& effect) {
    return EffectRegistry::Call(&effect, kQuestion, 0, 0, nullptr, 0.0f);
}

/// Removes and adds callbacks while other threads call them.
void ExpectNoLateCalls(std::size_t count, std::function<std::intptr_t(std::size_t)> const& ask,
                       std::function<void(std::size_t, EffectCallback const&)> const& add,
                       std::function<void(std::size_t)> const& remove) {
    std::atomic<bool> done{false};
    std::atomic<int> answered{0};
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&] {
            for (std::size_t turn = 0; !done; ++turn)
                answered += static_cast<int>(ask(turn % count));
        });
    // What a callback uses goes as soon as it is removed; a call that came late would touch it.
    std::vector<std::unique_ptr<std::atomic<int>>> used(count);
    for (std::size_t turn = 0; turn < 2400 || answered == 0; ++turn) {
        std::size_t const i = turn % count;
        remove(i);
        used[i] = std::make_unique<std::atomic<int>>(0);
        add(i, [counter = used[i].get()](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
            counter->fetch_add(1);
            return std::intptr_t{1};
        });
    }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    for (std::size_t i = 0; i < count; ++i)
        remove(i);
}

TEST(EffectRegistryTest, EffectIsAnsweredFromItsEntryToItsRemoval) {
    AEffect one{}, other{};
    EXPECT_FALSE(Ask(one));
    EXPECT_TRUE(EffectRegistry::Add(&one, Answering(1)));
    EXPECT_FALSE(EffectRegistry::Add(&one, Answering(2))) << "the first stays";
    EXPECT_EQ(Ask(one), 1);
    EXPECT_FALSE(Ask(other));
    EffectRegistry::Remove(&other);
    EffectRegistry::Remove(&one);
    EXPECT_FALSE(Ask(one));
    EXPECT_TRUE(EffectRegistry::Add(&one, Answering(3)));
    EXPECT_EQ(Ask(one), 3);
    EffectRegistry::Remove(&one);
    EXPECT_FALSE(EffectRegistry::Call(nullptr, kQuestion, 0, 0, nullptr, 0.0f));
}

TEST(EffectRegistryTest, ManyEffectsComeAndGoAndNoneIsTakenForAnother) {
    std::vector<AEffect> effects(500);
    for (int round = 0; round < 4; ++round) {
        for (std::size_t i = 0; i < effects.size(); ++i)
            EXPECT_TRUE(EffectRegistry::Add(&effects[i], Answering(static_cast<std::intptr_t>(i) + 1)));
        for (std::size_t i = 0; i < effects.size(); i += 2)
            EffectRegistry::Remove(&effects[i]);
        for (std::size_t i = 0; i < effects.size(); ++i)
            EXPECT_EQ(Ask(effects[i]).value_or(0), i % 2 == 0 ? 0 : static_cast<std::intptr_t>(i) + 1);
        for (AEffect& effect : effects)
            EffectRegistry::Remove(&effect);
    }
}

TEST(EffectRegistryTest, EffectMayBeRemovedInItsOwnCall) {
    AEffect effect{};
    EffectRegistry::Add(&effect, [&effect](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
        EffectRegistry::Remove(&effect);
        return std::intptr_t{9};
    });
    EXPECT_EQ(Ask(effect), 9);
    EXPECT_FALSE(Ask(effect));
    EXPECT_TRUE(EffectRegistry::Add(&effect, Answering(10)));
    EXPECT_EQ(Ask(effect), 10);
    EffectRegistry::Remove(&effect);
}

TEST(EffectRegistryTest, RemovalWaitsForTheCallsOfOtherThreads) {
    for (int round = 0; round < 20; ++round) {
        AEffect effect{};
        std::atomic<bool> inside{false}, removed{false};
        bool sawRemoval = false;
        EffectRegistry::Add(&effect, [&](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
            inside = true;
            for (int turn = 0; turn < 1000; ++turn)
                std::this_thread::yield();
            sawRemoval = removed;
            return std::intptr_t{1};
        });
        std::thread caller([&] { Ask(effect); });
        while (!inside)
            std::this_thread::yield();
        EffectRegistry::Remove(&effect);
        removed = true;
        caller.join();
        EXPECT_FALSE(sawRemoval);
    }
}

TEST(EffectRegistryTest, RemovedCallbackIsNotRunningAnyMore) {
    constexpr std::size_t kEffects = 8;
    std::vector<AEffect> effects(kEffects);
    ExpectNoLateCalls(
        kEffects, [&](std::size_t i) { return Ask(effects[i]).value_or(0); },
        [&](std::size_t i, EffectCallback const& callback) { EffectRegistry::Add(&effects[i], callback); },
        [&](std::size_t i) { EffectRegistry::Remove(&effects[i]); });
}

TEST(EditorCallbacksTest, RemovedEditorIsNotAskedAnyMore) {
    EditorCallbacks callbacks;
    auto* const editor = reinterpret_cast<VSTAudioFilterEditor*>(&callbacks);
    auto const ask = [&](std::size_t) { return callbacks.Call(kQuestion, 0, 0, nullptr, 0.0f); };
    ExpectNoLateCalls(
        1, ask, [&](std::size_t, EffectCallback const& callback) { callbacks.Add(editor, callback); },
        [&](std::size_t) { callbacks.Remove(editor); });
    EXPECT_EQ(ask(0), 0);
}

TEST(EditorCallbacksTest, EditorMayGoInItsOwnCall) {
    EditorCallbacks callbacks;
    auto* const editor = reinterpret_cast<VSTAudioFilterEditor*>(&callbacks);
    callbacks.Add(editor, [&](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
        callbacks.Remove(editor);
        return std::intptr_t{2};
    });
    EXPECT_EQ(callbacks.Call(kQuestion, 0, 0, nullptr, 0.0f), 2);
    EXPECT_EQ(callbacks.Call(kQuestion, 0, 0, nullptr, 0.0f), 0);
}

using VSTFiltersAndThreadsTest = VSTFilterTest;

TEST_F(VSTFiltersAndThreadsTest, EffectsCallOnThreadsOfTheirOwnWhileFiltersComeAndGo) {
    VSTFixtureConfiguration configuration;
    configuration.ownThread = true;
    configuration.logging = false;
    Open(configuration);
    for (int round = 0; round < 40; ++round) {
        std::vector<boost::intrusive_ptr<AudioFilter>> filters;
        for (int index = 0; index < 4; ++index) {
            filters.push_back(module->CreateAudioFilter(filter->GetID()));
            ASSERT_TRUE(filters.back());
            filters.back()->SetBlockSize(64);
            filters.back()->Resume();
        }
        for (auto const& running : filters)
            running->Suspend();
    }
    filter.reset();
    EXPECT_EQ((*fixture)->liveEffects(), 0);
    EXPECT_GT((*fixture)->ownThreadCalls(), 0);
}

} // namespace
