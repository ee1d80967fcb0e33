#include "Recorder.h"
#include "alarm/IOAlarmOutManager.h"
#include "support/ThreadWaits.h"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int OUTPUT = 1;
constexpr std::chrono::seconds OBSERVED{2};

double seconds(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// What 99 of 100 values do not exceed.
double percentile99(std::vector<double>& values) {
    const auto place = values.begin() + static_cast<std::ptrdiff_t>(values.size() * 99 / 100);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

void flash(IOAlarmOutManager& outputs) {
    outputs.setAlarmOutMode(OUTPUT, {AlarmOutMode::Flash, AlarmOutMode::Direct, 600000, 2.0F});
    outputs.triggerAlarm(OUTPUT);
}

// The worker has a record, and sleeps between two looks at it.
void cancelOurs(benchmark::State& state) {
    const Recorder recorder;
    auto& outputs = Recorder::get<IOAlarmOutManager>("IOAlarmOutManager");
    for (auto _ : state) {
        std::vector<double> times;
        for (int i = 0; i < 300; ++i) {
            flash(outputs);
            const auto begin = Clock::now();
            outputs.cancelAlarm(OUTPUT);
            times.push_back(seconds(begin));
        }
        state.SetIterationTime(percentile99(times));
    }
}

// A worker that sleeps and looks, as one would write it, joined by whoever cancels.
void cancelPeer(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<double> times;
        for (int i = 0; i < 20; ++i) {
            std::atomic<bool> isEnding{false};
            std::thread worker([&] {
                while (!isEnding) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(50));
                }
            });
            const auto begin = Clock::now();
            isEnding = true;
            worker.join();
            times.push_back(seconds(begin));
        }
        state.SetIterationTime(percentile99(times));
    }
}

void wakeUps(benchmark::State& state, bool isFlashing) {
    const Recorder recorder;
    auto& outputs = Recorder::get<IOAlarmOutManager>("IOAlarmOutManager");
    if (isFlashing) {
        flash(outputs);
    }
    for (auto _ : state) {
        const ThreadWaits waits;
        std::this_thread::sleep_for(OBSERVED);
        state.counters["each-second"] =
            static_cast<double>(waits.count()) / static_cast<double>(OBSERVED.count());
    }
    outputs.cancelAlarm(OUTPUT);
}

BENCHMARK(cancelOurs)->Name("cancel-p99/ours")->UseManualTime()->Iterations(1);
BENCHMARK(cancelPeer)->Name("cancel-p99/peer")->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(wakeUps, idle, false)->Name("wake-ups-idle/ours")->Iterations(1)->Repetitions(1);
BENCHMARK_CAPTURE(wakeUps, flashing, true)
    ->Name("wake-ups-flashing/ours")
    ->Iterations(1)
    ->Repetitions(1);

} // namespace
