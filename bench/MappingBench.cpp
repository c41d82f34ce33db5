// What the way of a track's channels through and around a filter costs: the maps themselves, a channel that goes around
// the filter, and the delay line under it.
#include "Comparison.h"

#include "fakes/RoutedFilter.h"
#include "vynaudiofilterhost/DelayLine.h"
#include "vynaudiofilterhost/MainThread.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace vynaudiofilterhost;

constexpr int kLatency = 480;
constexpr int kTrackChannels = 16;
constexpr int kMapBlock = 64;
int const kDelayedChannels[] = {2, 8};
int const kBlocks[] = {64, 512, 4096};
unsigned const kDelays[] = {0, 1, 100, 480, 5000, 96000};

/// One aligned buffer per channel.
class Buffers {
public:
    Buffers(int channels, int samples) {
        for (int channel = 0; channel < channels; ++channel) {
            mBuffers.emplace_back(static_cast<std::size_t>(samples));
            mPointers.push_back(mBuffers.back().Data());
        }
    }

    float** Pointers() { return mPointers.data(); }

private:
    std::vector<vynaccelerate::AlignedBuffer> mBuffers;
    std::vector<float*> mPointers;
};

/// A filter that does nothing, so that what is around it shows.
class EmptyFilter : public AudioFilter {
public:
    explicit EmptyFilter(int channels, int delay) : AudioFilter(u"empty", u"Empty"), mDelay(delay) {
        AddInputBus(vyntest::Bus(channels));
        AddOutputBus(vyntest::Bus(channels));
    }

    void Process(float**, float**, int, ChannelFlags, ChannelFlags&) override { benchmark::ClobberMemory(); }
    int GetInitialDelay() const override { return mDelay; }

private:
    int mDelay;
};

/// A filter on a track of so many channels, whose first channels go through it.
class Track {
public:
    Track(int filterChannels, int trackChannels, int blockSize, int delay, bool mapped)
        : mFilter(new EmptyFilter(filterChannels, delay)),
          mIn(trackChannels, blockSize),
          mOut(trackChannels, blockSize),
          mBlockSize(blockSize) {
        mFilter->SetBlockSize(blockSize);
        mFilter->SetUseChannelMap(mapped);
        mFilter->SetMainTargetBus(vyntest::Bus(trackChannels));
        mFilter->SetDefaultChannelMap(AudioFilter::kDirectionInput);
        mFilter->SetDefaultChannelMap(AudioFilter::kDirectionOutput);
        mFilter->Resume();
    }
    ~Track() { mFilter->Suspend(); }

    void Register(std::string const& name) {
        benchmark::RegisterBenchmark(name.c_str(), [this](benchmark::State& state) {
            ChannelFlags flags;
            for (auto _ : state) {
                mFilter->ProcessWithMapping(mIn.Pointers(), mOut.Pointers(), mBlockSize, ChannelFlags(), flags);
                benchmark::DoNotOptimize(flags);
            }
        });
    }

    void RegisterCopies(std::string const& name, int channels) {
        benchmark::RegisterBenchmark(name.c_str(), [this, channels](benchmark::State& state) {
            for (auto _ : state) {
                for (int channel = 0; channel < channels; ++channel)
                    std::memcpy(mOut.Pointers()[channel], mIn.Pointers()[channel],
                                static_cast<std::size_t>(mBlockSize) * sizeof(float));
                benchmark::ClobberMemory();
            }
        });
    }

private:
    boost::intrusive_ptr<AudioFilter> mFilter;
    Buffers mIn;
    Buffers mOut;
    int mBlockSize;
};

// A block in, a block out of the delay line.
void RunDelayLine(benchmark::State& state, unsigned block, unsigned delay, int channels) {
    DelayLine line(block, delay, static_cast<unsigned>(channels));
    Buffers in(channels, static_cast<int>(block));
    Buffers out(channels, static_cast<int>(block));
    for (auto _ : state) {
        line.WriteData(in.Pointers(), block);
        float** const delayed = line.GetDelayedOutput(block);
        for (int channel = 0; channel < channels; ++channel)
            vynaccelerate::utility::Copy(block, delayed[channel], out.Pointers()[channel]);
        benchmark::ClobberMemory();
    }
}

// The same bytes moved twice by memcpy, in and out of as much memory, at the same distance.
void RunTwoCopies(benchmark::State& state, unsigned block, unsigned delay, int channels) {
    std::size_t const ringSize = ((delay + block - 1) / block + 1) * std::size_t{block};
    Buffers ring(channels, static_cast<int>(ringSize + block));
    Buffers in(channels, static_cast<int>(block));
    Buffers out(channels, static_cast<int>(block));
    std::size_t const bytes = block * sizeof(float);
    std::size_t position = 0;
    for (auto _ : state) {
        for (int channel = 0; channel < channels; ++channel)
            std::memcpy(ring.Pointers()[channel] + position, in.Pointers()[channel], bytes);
        std::size_t const start = position + (position < delay ? ringSize : 0) - delay;
        for (int channel = 0; channel < channels; ++channel)
            std::memcpy(out.Pointers()[channel], ring.Pointers()[channel] + start, bytes);
        position = position + block == ringSize ? 0 : position + block;
        benchmark::ClobberMemory();
    }
}

std::string Name(std::string const& what, int block, unsigned delay) {
    return what + "/block " + std::to_string(block) + "/delay " + std::to_string(delay);
}

bool CompareMaps(vynbench::Medians const& medians) {
    bool kept =
        vynbench::Report("stereo block of 64, maps over no maps", medians["maps"] - medians["direct"], 25.0, "ns");
    kept &= vynbench::Report("  the same with a latency of 480 samples", medians["maps, late"] - medians["direct"],
                             25.0, "ns");
    return kept;
}

bool CompareChannelsAround(vynbench::Medians const& medians) {
    bool kept = true;
    for (int const block : kBlocks) {
        for (unsigned const delay : {0u, static_cast<unsigned>(kLatency)}) {
            double const channels = medians[Name("around", block, delay)] - medians[Name("none around", block, delay)];
            std::string const what = "channel around, block " + std::to_string(block) + ", latency " +
                                     std::to_string(delay) + ", over a memcpy";
            kept &= vynbench::Report(what, channels / medians[Name("memcpy", block, 0)], 2.2, "times");
        }
    }
    return kept;
}

bool CompareDelayLines(vynbench::Medians const& medians, int channels) {
    bool kept = true;
    std::string const track = std::to_string(channels) + " channels";
    for (int const block : kBlocks) {
        for (unsigned const delay : kDelays) {
            std::string const what = "delay line, " + track + ", block " + std::to_string(block) + ", delay " +
                                     std::to_string(delay) + ", over two memcpy";
            kept &= vynbench::Report(
                what, medians[Name("line " + track, block, delay)] / medians[Name("copies " + track, block, delay)],
                1.0 / 0.8, "times");
        }
    }
    return kept;
}

void RegisterDelayLines(int block) {
    auto const length = static_cast<unsigned>(block);
    for (int const channels : kDelayedChannels) {
        std::string const track = std::to_string(channels) + " channels";
        for (unsigned const delay : kDelays) {
            benchmark::RegisterBenchmark(Name("line " + track, block, delay).c_str(), RunDelayLine, length, delay,
                                         channels);
            benchmark::RegisterBenchmark(Name("copies " + track, block, delay).c_str(), RunTwoCopies, length, delay,
                                         channels);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    SetMainThreadToCurrentThread();
    std::vector<std::unique_ptr<Track>> tracks;
    auto const add = [&](std::string const& name, auto... shape) {
        tracks.push_back(std::make_unique<Track>(shape...));
        tracks.back()->Register(name);
    };
    add("direct", 2, 2, kMapBlock, 0, false);
    add("maps", 2, 2, kMapBlock, 0, true);
    add("maps, late", 2, 2, kMapBlock, kLatency, true);
    for (int const block : kBlocks) {
        for (int const delay : {0, kLatency}) {
            add(Name("none around", block, static_cast<unsigned>(delay)), 1, 1, block, delay, true);
            add(Name("around", block, static_cast<unsigned>(delay)), 1, kTrackChannels, block, delay, true);
        }
        tracks.back()->RegisterCopies(Name("memcpy", block, 0), kTrackChannels - 1);
        RegisterDelayLines(block);
    }
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    bool const maps = CompareMaps(medians);
    bool const around = CompareChannelsAround(medians);
    bool kept = maps && around;
    for (int const channels : kDelayedChannels)
        kept &= CompareDelayLines(medians, channels);
    return kept ? 0 : 1;
}
