#include "fakes/RoutedFilter.h"
#include "host/HostTest.h"
#include "vynaudiofilterhost/MainThread.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <thread>

namespace {

using namespace vyntest;

constexpr std::size_t kSamples = 16;
constexpr std::size_t kTargets = 4;
constexpr float kUntouched = -9.0f;

/// Renders blocks until it is told to stop, and keeps the first thing that can't be.
class Renderer {
public:
    explicit Renderer(RoutedFilter& filter) : mFilter(filter), mThread([this] { Run(); }) {}

    std::string Stop() {
        mStop = true;
        mThread.join();
        return mFault;
    }

    std::uint64_t GetBlocks() const { return mBlocks; }

    void WaitForBlocks(std::uint64_t blocks) const {
        for (std::uint64_t const end = mBlocks + blocks; mBlocks < end;)
            std::this_thread::yield();
    }

private:
    void Run() {
        std::array<std::array<float, kSamples>, kTargets> in{};
        std::array<float*, kTargets> inputs{};
        std::array<float*, kTargets> outputs{};
        for (std::size_t target = 0; target < kTargets; ++target) {
            in[target].fill(static_cast<float>(target + 1));
            inputs[target] = in[target].data();
            outputs[target] = mOut[target].data();
        }
        while (!mStop && mFault.empty()) {
            for (auto& buffer : mOut)
                buffer.fill(kUntouched);
            // Every other block one of the channels comes in silent.
            ChannelFlags const silent((mBlocks & 1) << (mBlocks / 2 % kTargets));
            ChannelFlags flags;
            mFilter.ProcessWithMapping(inputs.data(), outputs.data(), kSamples, silent, flags);
            Check(flags);
            ++mBlocks;
        }
    }

    // Each input of the filter reads one channel or silence. Each channel of the track has what one of the filter's
    // outputs writes, its own input from earlier, or nothing and a flag.
    void Check(ChannelFlags flags) {
        for (float const sample : mFilter.read) {
            if (sample < 0.0f || sample > static_cast<float>(kTargets))
                mFault = "read " + std::to_string(sample);
        }
        for (std::size_t target = 0; target < kTargets; ++target) {
            float const sample = mOut[target].back();
            bool const around = sample == 0.0f || sample == static_cast<float>(target + 1);
            bool const written = around || sample == 10.0f || sample == 11.0f;
            bool const silent = flags.Test(static_cast<unsigned>(target));
            if (!written && !(sample == kUntouched && silent))
                mFault = "target " + std::to_string(target) + " has " + std::to_string(sample);
        }
    }

    RoutedFilter& mFilter;
    std::array<std::array<float, kSamples>, kTargets> mOut{};
    std::atomic<bool> mStop{false};
    std::string mFault;
    std::atomic<std::uint64_t> mBlocks{0};
    std::thread mThread;
};

// Meant for the thread sanitizer; elsewhere it proves that no block reads or writes where nobody sent it.
TEST(ChannelMappingStressTest, MapsChangeAMillionTimesWhileBlocksAreRendered) {
    SetMainThreadToCurrentThread();
    boost::intrusive_ptr<RoutedFilter> const filter(new RoutedFilter({Bus(2)}, {Bus(2)}));
    filter->latency = 100;
    filter->SetBlockSize(kSamples);
    filter->SetUseChannelMap(true);
    filter->SetMainTargetBus(Bus(3));
    filter->SetSideChainTargetBus(Bus(1));
    filter->Resume();
    Renderer renderer(*filter);
    std::vector<vynmediatypes::ChannelMap> const maps{MapOf({0, 1}), MapOf({2, 0}), MapOf({-1, 3}), MapOf({}),
                                                      MapOf({1, 9})};
    unsigned state = 1;
    auto const random = [&state](unsigned limit) {
        state = state * 1664525u + 1013904223u;
        return (state >> 16) % limit;
    };
    for (int change = 0; change < 1000000; ++change) {
        auto const direction = static_cast<AudioFilter::Direction>(random(2));
        if (change % 16 == 0)
            filter->SetSideChainTargetBus(Bus(change / 16 % 2));
        else if (random(2) == 0)
            filter->SetChannelMap(maps[random(static_cast<unsigned>(maps.size()))], direction);
        else
            filter->AssignChannelMapping(direction, static_cast<int>(random(2)), static_cast<int>(random(5)) - 1);
    }
    filter->SetSideChainTargetBus(Bus(1));
    filter->SetChannelMap(MapOf({-1, 3}), AudioFilter::kDirectionInput);
    renderer.WaitForBlocks(2);
    EXPECT_EQ(renderer.Stop(), "");
    EXPECT_EQ(filter->read[0], 0.0f) << "the last map is the one that is rendered";
    EXPECT_GT(renderer.GetBlocks(), 1000);
    filter->Suspend();
}

} // namespace
