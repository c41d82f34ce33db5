#include "FilterFixture.h"

#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/VST/src/EditorCallbacks.h"
#include "vynaudiofilterhost/VST/src/EffectRegistry.h"
#include "vynaudiofilterhost/VST/src/StaticAudioMasterCallback.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace vynaudiofilterhost;
using namespace vynaudiofilterhost::vst;
using namespace vynfixtures;

constexpr std::int32_t kQuestion = 1000;

EffectCallback Answering(std::intptr_t answer) {
    return [answer](std::int32_t, std::int32_t, std::intptr_t, void*, float) { return answer; };
}

std::optional<std::intptr_t> Ask(AEffect& effect) {
    return EffectRegistry::Call(&effect, kQuestion, 0, 0, nullptr, 0.0f);
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

TEST(EffectRegistryTest, CallNeitherAllocatesNorLocks) {
    AEffect effect{};
    EffectRegistry::Add(&effect, Answering(5));
    Ask(effect);
    {
        vyntest::NoAllocationScope const guard;
        EXPECT_EQ(Ask(effect), 5);
    }
    EffectRegistry::Remove(&effect);
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
    constexpr int kRounds = 300;
    constexpr std::size_t kEffects = 8;
    std::vector<AEffect> effects(kEffects);
    std::atomic<bool> done{false};
    std::atomic<int> answered{0};
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&] {
            for (std::size_t turn = 0; !done; ++turn)
                if (Ask(effects[turn % kEffects]))
                    ++answered;
        });
    // What a callback uses goes as soon as it is removed; a call that came late would touch it.
    std::vector<std::unique_ptr<std::atomic<int>>> used(kEffects);
    for (int round = 0; round < kRounds || answered == 0; ++round)
        for (std::size_t i = 0; i < kEffects; ++i) {
            EffectRegistry::Remove(&effects[i]);
            used[i] = std::make_unique<std::atomic<int>>(0);
            EffectRegistry::Add(&effects[i],
                                [counter = used[i].get()](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
                                    counter->fetch_add(1);
                                    return std::intptr_t{1};
                                });
        }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    for (AEffect& effect : effects)
        EffectRegistry::Remove(&effect);
}

TEST(EditorCallbacksTest, RemovedEditorIsNotAskedAnyMore) {
    EditorCallbacks callbacks;
    std::atomic<bool> done{false};
    std::atomic<int> answered{0};
    std::thread reader([&] {
        while (!done)
            answered += static_cast<int>(callbacks.Call(kQuestion, 0, 0, nullptr, 0.0f));
    });
    for (int round = 0; round < 1000 || answered == 0; ++round) {
        // What a callback uses goes as soon as its editor is removed.
        auto const used = std::make_unique<std::atomic<int>>(0);
        auto* const editor = reinterpret_cast<VSTAudioFilterEditor*>(used.get());
        callbacks.Add(editor, [counter = used.get()](std::int32_t, std::int32_t, std::intptr_t, void*, float) {
            counter->fetch_add(1);
            return std::intptr_t{1};
        });
        callbacks.Remove(editor);
    }
    done = true;
    reader.join();
    EXPECT_EQ(callbacks.Call(kQuestion, 0, 0, nullptr, 0.0f), 0);
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

using VSTFiltersAndThreadsTest = vyntest::VSTFilterTest;

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
