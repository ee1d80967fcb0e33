#include "BenchBoard.h"
#include "FakeDriver.h"
#include "alarm/IOAlarmInManager.h"

#include <benchmark/benchmark.h>
#include <map>
#include <mutex>

namespace {

constexpr int VALID_LEVEL = 1;

void judgeOurs(benchmark::State& state) {
    const auto count = static_cast<int>(state.range());
    const BenchBoard board(count, 1);
    const SafePointer<GPIOOperator> gpio(new ("bench", __LINE__) GPIOOperator);
    gpio->setGPIO(SafePointer<IGPIO>(new ("bench", __LINE__) FakeDriver));
    SafePointer<MachineConfigurationDetail> detail(new ("bench", __LINE__)
                                                       MachineConfigurationDetail);
    detail->init();
    IOAlarmInManager manager;
    manager.setGPIOOperator(gpio);
    manager.setMachineConfigurationDetail(detail);
    manager.init();
    manager.notifyAlarmConsumers(false);
    for (auto _ : state) {
        manager.notifyAlarmConsumers(false);
    }
}

// What the manager does for its inputs, and no more.
void judgePeer(benchmark::State& state) {
    const auto count = static_cast<int>(state.range());
    FakeDriver driver;
    struct Input {
        int validLevel;
        int last;
    };
    std::mutex mutex;
    std::map<int, Input> inputs;
    std::vector<IOInfo> lines;
    for (int id = 1; id <= count; ++id) {
        inputs[id] = {VALID_LEVEL, 0};
        lines.push_back(BenchBoard::lineOf(id));
    }
    std::vector<IOState> states;
    int changes = 0;
    for (auto _ : state) {
        driver.get(lines, states);
        const std::lock_guard<std::mutex> guard(mutex);
        for (const IOState& each : states) {
            const auto known = inputs.find(each.getId());
            const int alarm = each.getLevel() == known->second.validLevel ? 1 : 0;
            if (alarm != known->second.last) {
                known->second.last = alarm;
                ++changes;
            }
        }
    }
    benchmark::DoNotOptimize(changes);
}

const std::vector<std::int64_t> COUNTS{16, 64, 512, 4096};
BENCHMARK(judgeOurs)->Name("judge/ours")->ArgsProduct({COUNTS});
BENCHMARK(judgePeer)->Name("judge/peer")->ArgsProduct({COUNTS});

} // namespace
