#include "platform/GpioDetect.h"

#include "platform/Gpio.h"
#include "platform/System.h"
#include "support/Gate.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr int LINES = 8;
constexpr int OUTPUT = 8;
constexpr int SIGNAL = 10;

/// A detector over the lines 0 to 7 of group 0. Its handler reads them, counts its calls and acts.
class GPIODetectTest : public testing::Test {
protected:
    GPIODetectTest() {
        s_Current = this;
        addBank();
        m_Gpio.init();
    }

    void addBank() {
        for (int bit = 0; bit <= OUTPUT; ++bit) {
            m_Board.addLine(0, bit);
        }
    }

    static void handle(int signalNumber) {
        EXPECT_EQ(signalNumber, SIGNAL);
        int levels = 0;
        for (int bit = 0; bit < LINES; ++bit) {
            int level = 0x100; // when it cannot be read
            s_Current->m_Gpio.get(0, bit, level);
            levels |= level << bit;
        }
        s_Current->m_Seen = levels;
        s_Current->m_Calls.open();
        s_Current->m_Action();
    }

    void open() {
        EXPECT_EQ(m_Detect->open(), 0);
        EXPECT_EQ(m_Detect->setSignalHandler(SIGNAL, handle), 0);
        for (int bit = 0; bit < LINES; ++bit) {
            EXPECT_EQ(m_Detect->addDetectLine(m_Pid, 0, bit), 0);
        }
    }

    void start() {
        open();
        EXPECT_EQ(m_Detect->startDetect(), 0);
    }

    /// Waits for a handler call that has read these levels, bit by bit.
    void expectSeen(int levels) {
        for (;;) {
            const int calls = m_Calls.count();
            if (m_Seen == levels) {
                return;
            }
            ASSERT_TRUE(m_Calls.wait(calls + 1)) << "the last call has seen " << m_Seen;
        }
    }

    static GPIODetectTest* s_Current;

    const int m_Pid = SystemHelper::getPid();
    SimulatedBoard m_Board;
    GPIO m_Gpio;
    Gate m_Calls;
    std::function<void()> m_Action = [] {};
    std::atomic<int> m_Seen{-1};
    std::unique_ptr<GPIODetect> m_Detect{new GPIODetect};
};
GPIODetectTest* GPIODetectTest::s_Current = nullptr;

TEST_F(GPIODetectTest, CallsTheHandlerForWatchedLinesOnly) {
    std::atomic<int> early{0};
    m_Action = [&] { early += m_Seen % 2 == 0 ? 1 : 0; };
    open();
    EXPECT_EQ(m_Detect->removeDetectLine(m_Pid, 0, 7), 0);
    EXPECT_EQ(m_Detect->startDetect(), 0);
    EXPECT_EQ(m_Detect->startDetect(), 0) << "it runs already";
    for (int i = 0; i < 100; ++i) {
        m_Gpio.set(0, OUTPUT, i % 2);
        m_Board.setLevel(0, 7, i % 2);
        std::ofstream(m_Board.bank(0) / "temporary") << i;
        m_Board.addLine(1, 0);
    }
    m_Board.write(0, 0, "1\n");
    expectSeen(0x81);
    EXPECT_EQ(m_Detect->stopDetect(), 0);
    EXPECT_EQ(early, 0) << "calls before the change";
}

TEST_F(GPIODetectTest, TheLastCallSeesTheLevelsAfterABurstAlsoWhenCallsThrow) {
    LogCapture log;
    m_Action = [&] { throw std::runtime_error("no ink"); };
    start();
    for (int round = 0; round < 3; ++round) {
        int levels = 0;
        for (int i = 0; i < 2000 + round; ++i) {
            const int bit = i * 5 % LINES;
            const int level = i / LINES % 2;
            levels = (levels & ~(1 << bit)) | level << bit;
            m_Board.setLevel(0, bit, level);
        }
        expectSeen(levels);
        EXPECT_TRUE(log.waitFor("no ink"));
    }
    EXPECT_EQ(m_Detect->stopDetect(), 0);
}

TEST_F(GPIODetectTest, SurvivesAnOverflowThatHidesTheExchangeOfTheBank) {
    int limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    ASSERT_GT(limit, 0);
    open();
    for (int i = 0; i <= limit; ++i) {
        ASSERT_NE(m_Gpio.set(0, OUTPUT, i % 2), 0);
    }
    fs::rename(m_Board.bank(0), m_Board.root() / "old");
    addBank();
    EXPECT_EQ(m_Detect->startDetect(), 0);
    expectSeen(0x00);
    m_Board.setLevel(0, 1, 1);
    expectSeen(0x02);
}

TEST_F(GPIODetectTest, FindsABankThatWasGone) {
    LogCapture log;
    start();
    const std::function<void()> losses[] = {
        [&] { fs::remove_all(m_Board.bank(0)); },
        [&] { fs::rename(m_Board.bank(0), m_Board.root() / "bank"); },
        [&] { fs::rename(m_Board.device(), m_Board.root() / "device"); },
    };
    for (const auto& lose : losses) {
        m_Board.setLevel(0, 0, 1);
        expectSeen(0x01);
        lose();
        EXPECT_TRUE(log.waitFor("group 0 cannot be watched"));
        addBank();
        EXPECT_TRUE(log.waitFor("group 0 is watched again"));
        expectSeen(0x00);
        m_Board.setLevel(0, 2, 1);
        expectSeen(0x04);
        m_Board.setLevel(0, 2, 0);
    }
}

TEST_F(GPIODetectTest, DeliversChangesMadeBeforeStartAndAfterAStopFromTheHandler) {
    Gate stopped;
    m_Action = [&] {
        EXPECT_EQ(m_Detect->startDetect(), 0);
        EXPECT_EQ(m_Detect->removeDetectLine(m_Pid, 0, 1), 0);
        EXPECT_EQ(m_Detect->addDetectLine(m_Pid, 0, 1), 0);
        EXPECT_EQ(m_Detect->stopDetect(), 0);
        m_Board.setLevel(0, 1, 1);
        stopped.open();
    };
    open();
    m_Board.setLevel(0, 0, 1);
    EXPECT_EQ(m_Detect->startDetect(), 0);
    EXPECT_TRUE(stopped.wait());
    EXPECT_EQ(m_Detect->stopDetect(), 0);
    EXPECT_EQ(m_Calls.count(), 1);
    m_Action = [] {};
    EXPECT_EQ(m_Detect->startDetect(), 0);
    expectSeen(0x03);
    EXPECT_EQ(m_Detect->stopDetect(), 0);
    start(); // opened again
    m_Board.setLevel(0, 0, 0);
    expectSeen(0x02);
}

TEST_F(GPIODetectTest, StopWaitsForTheRunningCall) {
    Gate stopping;
    std::atomic<bool> left{false};
    m_Action = [&] {
        stopping.wait(2);
        for (int i = 0; i < 1000; ++i) { // a stop that does not wait gets ahead here
            std::this_thread::yield();
        }
        left = true;
    };
    start();
    m_Board.setLevel(0, 0, 1);
    EXPECT_TRUE(m_Calls.wait());
    const auto stop = [&] {
        stopping.open();
        EXPECT_EQ(m_Detect->stopDetect(), 0);
        EXPECT_TRUE(left);
    };
    std::thread other(stop);
    stop();
    other.join();
}

TEST_F(GPIODetectTest, MayBeDestroyedFromTheHandler) {
    for (int round = 1; round <= 20; ++round) {
        Gate threadEnd;
        m_Action = [&] {
            threadEnd.openAtThreadEnd();
            m_Detect.reset();
        };
        GPIODetect* const detect = m_Detect.get();
        open();
        m_Board.setLevel(0, 0, round % 2);
        EXPECT_EQ(detect->startDetect(), 0);
        ASSERT_TRUE(threadEnd.wait());
        EXPECT_EQ(m_Calls.count(), round);
        m_Detect.reset(new GPIODetect);
    }
}

TEST_F(GPIODetectTest, RefusesWhatCannotWork) {
    LogCapture log;
    const auto refused = [&](int result, const std::string& cause) {
        EXPECT_NE(result, 0) << cause;
        log.expectOne({cause});
    };
    refused(m_Detect->addDetectLine(m_Pid, 0, 0), "not open");
    refused(m_Detect->startDetect(), "not open");
    EXPECT_EQ(m_Detect->open(), 0);
    refused(m_Detect->startDetect(), "no handler");
    refused(m_Detect->setSignalHandler(SIGNAL, nullptr), "null");
    refused(m_Detect->addDetectLine(m_Pid + 1, 0, 0), "process");
    refused(m_Detect->addDetectLine(m_Pid, 0, LINES + 1), "No such file");
    refused(m_Detect->addDetectLine(m_Pid, 0, -1), "negative");
    open();
    EXPECT_EQ(m_Detect->open(), 0);
    refused(m_Detect->removeDetectLine(m_Pid, 0, 0), "not watched");
    m_Detect->close();
    refused(m_Detect->startDetect(), "not open");
    fs::remove_all(m_Board.device());
    refused(m_Detect->open(), "dev/gpiodrv");
}

} // namespace
