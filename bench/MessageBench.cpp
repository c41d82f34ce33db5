// What a message costs on its way through the ring.
#include "Comparison.h"

#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/ProcessMessageHandler.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace {

using namespace vynaudiofilterhost;
using Clock = std::chrono::steady_clock;

constexpr int kBatch = 32;

class EmptyMessage : public Message {};

// The messages are made outside the measured time: what is in them is the poster's.
template <class Work>
void RunBatches(benchmark::State& state, Work&& work) {
    ProcessMessageHandler handler;
    handler.SetProcessing(true);
    std::vector<boost::intrusive_ptr<Message>> messages(kBatch);
    for (auto _ : state) {
        for (auto& message : messages)
            message = new EmptyMessage;
        auto const start = Clock::now();
        work(handler, messages);
        std::chrono::duration<double> const elapsed = Clock::now() - start;
        state.SetIterationTime(elapsed.count());
        handler.PumpFromMainThread();
    }
}

void PostAndExecute(benchmark::State& state) {
    RunBatches(state, [](ProcessMessageHandler& handler, auto& messages) {
        for (auto& message : messages)
            handler.Post(std::move(message));
        handler.PumpFromProcessThread();
    });
}

void PostExecuteAndPurge(benchmark::State& state) {
    RunBatches(state, [](ProcessMessageHandler& handler, auto& messages) {
        for (auto& message : messages)
            handler.Post(std::move(message));
        handler.PumpFromProcessThread();
        handler.PumpFromMainThread();
    });
}

void PumpEmpty(benchmark::State& state) {
    ProcessMessageHandler handler;
    for (auto _ : state) {
        handler.PumpFromProcessThread();
        benchmark::ClobberMemory();
    }
}

BENCHMARK(PostAndExecute)->UseManualTime();
BENCHMARK(PostExecuteAndPurge)->UseManualTime();
BENCHMARK(PumpEmpty);

} // namespace

int main(int argc, char** argv) {
    SetMainThreadToCurrentThread();
    vynbench::Medians const medians = vynbench::RunInterleaved(argc, argv);
    bool kept = vynbench::Report("Post to execution, a message", medians["PostAndExecute"] / kBatch, 60.0, "ns");
    vynbench::Report("the same with the purge, a message", medians["PostExecuteAndPurge"] / kBatch, 120.0, "ns");
    vynbench::Report("pump with nothing queued", medians["PumpEmpty"], 5.0, "ns");
    return kept ? 0 : 1;
}
