#include "gpio/GPIOOperator.h"
#include "support/FakeGPIO.h"
#include "support/Gate.h"
#include "support/ManualClock.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace {

// One caller keeps cancelling the last record, which stops the worker, while another adds its own:
// whoever comes last, a record in the map is served.
TEST(GPIOOperatorRace, EveryRecordIsServed) {
    ManualClock clock(ManualClock::MOVES_FOR_ALL);
    auto* driver = new ("test", __LINE__) FakeGPIO;
    Gate ended;
    std::atomic<bool> named{false};
    driver->m_OnDrive = [&](FakeGPIO::Line line, int level) {
        if (line == FakeGPIO::Line{1, 1} && level == 0) {
            char name[16];
            pthread_getname_np(pthread_self(), name, sizeof(name));
            named = named || std::string(name) == "GPIOOperationTh"; // what the kernel keeps of it
            ended.open();
        }
    };
    GPIOOperator gpio;
    gpio.setGPIO(SafePointer<IGPIO>(driver));
    std::atomic<bool> done{false};
    std::thread canceller([&] {
        while (!done) {
            gpio.set(0, 1, 1, 0, 0, 0, 0);
        }
    });
    for (int round = 1; round <= 400; ++round) {
        ASSERT_EQ(gpio.set(1, 1, 0, 1, 0, 0, 1), 1);
        ASSERT_TRUE(ended.wait(round)) << "a record was left without a worker in round " << round;
        driver->takeJournal();
    }
    done = true;
    canceller.join();
    EXPECT_TRUE(named);
}

} // namespace
