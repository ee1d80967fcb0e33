#include "FakeDriver.h"
#include "gpio/GPIOOperator.h"
#include "platform/Thread.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <future>
#include <map>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int LONG = 1000000; // milliseconds

double microseconds() {
    return std::chrono::duration<double, std::micro>(Clock::now().time_since_epoch()).count();
}

/// Passes in a thread that has been asked to end, where the wait before each is over at once.
class Passes {
public:
    Passes(benchmark::State& state, GPIOOperator& gpio)
        : m_State(state), m_GPIO(gpio),
          m_Thread(function<int>(&Passes::run, this), "passes", function<int>(GThread::emptyFun),
                   function<int>(GThread::emptyFun)) {
        m_Thread.start();
        m_Done.get_future().wait();
    }

private:
    int run() {
        m_Thread.stop();
        for (auto _ : m_State) {
            m_GPIO.execOperation();
        }
        m_Done.set_value();
        return 0;
    }

    benchmark::State& m_State;
    GPIOOperator& m_GPIO;
    std::promise<void> m_Done;
    GThread m_Thread;
};

void passOurs(benchmark::State& state) {
    GPIOOperator gpio;
    gpio.setGPIO(SafePointer<IGPIO>(new ("bench", __LINE__) FakeDriver));
    for (int line = 0; line < state.range(); ++line) {
        gpio.set(line / 64, line % 64, GPIOOperateRecord::HOLD, 1, 0, 0, LONG);
    }
    gpio.stop();
    const Passes passes(state, gpio);
}

void passPeer(benchmark::State& state) {
    struct Record {
        double started;
        double last;
        double lifetime;
    };
    std::map<int, Record> records;
    for (int line = 0; line < state.range(); ++line) {
        records[line / 64 << 16 | line % 64] = {microseconds(), microseconds(), 1000.0 * LONG};
    }
    int due = 0;
    for (auto _ : state) {
        for (const auto& [key, record] : records) {
            if (record.lifetime < microseconds() - record.started ||
                record.lifetime <= microseconds() - record.last) {
                ++due;
            }
        }
    }
    benchmark::DoNotOptimize(due);
}

const std::vector<std::int64_t> COUNTS{4, 64, 1024};
BENCHMARK(passOurs)->Name("worker-pass/ours")->ArgsProduct({COUNTS});
BENCHMARK(passPeer)->Name("worker-pass/peer")->ArgsProduct({COUNTS});

} // namespace
