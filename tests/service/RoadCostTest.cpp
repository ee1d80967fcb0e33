// What the roads of an alarm cost, exactly: allocations, and calls of the kernel.
#include "alarm/IOAlarmInManager.h"
#include "alarm/IOAlarmOutManager.h"
#include "gpio/GPIOOperator.h"
#include "support/Allocations.h"
#include "support/EdgeRoad.h"
#include "support/ThreadWaits.h"

#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

/// The allocations of the work, once it has been done before.
long costOf(
    const std::function<void()>& work, const std::function<void()>& prepare = [] {}) {
    long cost = 0;
    for (int i = 0; i < 3; ++i) {
        prepare();
        cost = -allocations;
        work();
        cost += allocations;
    }
    return cost;
}

class RoadCostTest : public ServiceTest {
protected:
    void SetUp() override { m_Factory.start(); }

    template <typename T> T& get(const char* name) { return m_Factory.get<T>(name); }

    Factory m_Factory;
};

TEST_F(RoadCostTest, NothingIsAllocatedOnceEverythingIsThere) {
    m_Factory.stop(); // from here on this thread is the one that looks
    auto& inputs = get<IOAlarmInManager>("IOAlarmInManager");
    auto& outputs = get<IOAlarmOutManager>("IOAlarmOutManager");
    Doorbell bell;
    inputs.addListener(&bell);
    const auto look = [&] { inputs.notifyAlarmConsumers(false); };
    EXPECT_EQ(costOf(look), 0) << "no change";
    const int rings = bell.m_Rings;
    EXPECT_EQ(costOf(look, [&] { m_Board.setLevel(0, 2, 1 - m_Board.level(0, 2)); }), 0) << "one";
    EXPECT_EQ(bell.m_Rings, rings + 3);
    outputs.setAlarmOutMode(2, {AlarmOutMode::Flash, AlarmOutMode::Direct, 60000, 2.0F});
    EXPECT_EQ(costOf([&] { outputs.triggerAlarm(2); }), 0) << "a record that is there";
    auto& gpio = get<GPIOOperator>("gpio");
    EXPECT_EQ(costOf([&] { gpio.execOperation(); }), 0) << "the worker's pass";
}

// A window without any is there only when nobody looks now and then.
TEST_F(RoadCostTest, NobodyWakesUpBeforeSomethingIsDue) {
    using Clock = std::chrono::steady_clock;
    const auto waitsIn = [](std::chrono::milliseconds window) {
        const ThreadWaits waits;
        std::this_thread::sleep_for(window);
        return waits.count();
    };
    long idle = 1;
    for (int i = 0; i < 20 && idle != 0; ++i) { // the threads have just begun
        idle = waitsIn(std::chrono::milliseconds(250));
    }
    EXPECT_EQ(idle, 0);
    auto& outputs = get<IOAlarmOutManager>("IOAlarmOutManager");
    outputs.setAlarmOutMode(2, {AlarmOutMode::Flash, AlarmOutMode::Direct, 60000, 2.0F});
    outputs.triggerAlarm(2);
    const auto begin = Clock::now();
    const long flashing = waitsIn(std::chrono::milliseconds(500));
    EXPECT_GE(flashing, 1);
    EXPECT_LE(flashing, (Clock::now() - begin) / std::chrono::milliseconds(50) + 2);
}

// The bank of each group is looked at once for a batch, and of a line's file its content alone.
TEST_F(RoadCostTest, AnEdgeOfADirectoryBoardIsAWaitAReadAndTheFiles) {
    m_Factory.stop();
    const int line = open(m_Board.line(0, 2).c_str(), O_WRONLY | O_CLOEXEC);
    const auto road = callsOfEdges([&](int level) { pwrite(line, level != 0 ? "1" : "0", 1, 0); });
    close(line);
    ASSERT_EQ(road.size(), 3U);
    for (const std::string& calls : road) {
        EXPECT_EQ(calls, "close*16 open*16 pread*16 read stat*4 wait");
    }
}

} // namespace
