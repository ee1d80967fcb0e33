#include "gpio/GPIOOperator.h"

#include "platform/Diagnostics.h"
#include "support/FakeGPIO.h"
#include "support/Gate.h"
#include "support/ManualClock.h"

#include <atomic>
#include <dlfcn.h>
#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>
#include <thread>
#include <utility>

namespace {

/// The calls that reach the operator's thread: written down here, then passed on to the real ones.
struct ThreadCalls {
    static inline bool kept = false; // while only one thread at a time makes them
    static inline std::string journal;
    static inline bool late = false;     // it runs, but does not say so yet
    static inline bool refuses = false;  // to be started, as a late one the second time
    static inline bool starting = false; // it may call itself
    static inline std::function<void()> onStop;

    static void note(const char* call) { journal += kept ? call : ""; }
    static std::string take() { return std::exchange(journal, {}); }
};

template <typename Result, typename Thread> Result pass(const char* symbol, Thread* thread) {
    return reinterpret_cast<Result (*)(Thread*)>(dlsym(RTLD_NEXT, symbol))(thread);
}

} // namespace

int GThread::running() const {
    ThreadCalls::note(ThreadCalls::starting ? "" : "running ");
    const int real = pass<int>("_ZNK7GThread7runningEv", this);
    return ThreadCalls::late && !ThreadCalls::starting ? 0 : real;
}

int GThread::start() {
    if (std::exchange(ThreadCalls::refuses, ThreadCalls::late)) {
        return 0;
    }
    ThreadCalls::note("start ");
    ThreadCalls::starting = true;
    const int result = pass<int>("_ZN7GThread5startEv", this);
    ThreadCalls::starting = false;
    return result;
}

void GThread::stop() {
    ThreadCalls::note("stop ");
    if (ThreadCalls::onStop) {
        ThreadCalls::onStop();
    }
    pass<void>("_ZN7GThread4stopEv", this);
}

namespace {

constexpr int HOLD = 1;
constexpr int TOGGLE = 2;
constexpr int PULSE = 3;

TEST(GPIOOperateRecord, DerivesTheIntervalInSinglePrecision) {
    GPIOOperateRecord record;
    EXPECT_EQ(record.getEachTimeOut(), 0.0);
    const std::pair<float, double> rows[] = {
        {3.0F, 333333.34375}, {0.5F, 2000000.0}, {0.0F, -2147483648.0}, {-2.0F, -500000.0}};
    for (const auto& [frequency, interval] : rows) {
        record.setFrequency(frequency);
        EXPECT_EQ(record.getEachTimeOut(), interval) << frequency;
    }
}

TEST(GPIOOperateRecord, JudgesItsTimesAtTheBoundaries) {
    // Half a second is exact in binary, so that the boundary is met to the microsecond.
    const int half = 500000;
    const struct {
        int mode, timeOut;
        float frequency;
        int elapsed;
        bool operates, stops;
    } rows[] = {
        {HOLD, half, 0, half - 1, false, false}, {HOLD, half, 0, half, true, false},
        {HOLD, half, 0, half + 1, true, true},   {TOGGLE, half, 2, half - 1, false, false},
        {TOGGLE, half, 2, half, true, false},    {TOGGLE, half, 2, half + 1, true, true},
        {HOLD, half, 0, -half, false, false}, // the clock reads earlier than the record
        {TOGGLE, half, 2, -half, false, false},  {TOGGLE, half, 0, -half, true, false},
    };
    for (const auto& row : rows) {
        ManualClock clock;
        GPIOOperateRecord record;
        record.setOperateMode(row.mode);
        record.setTimeOut(row.timeOut);
        record.setFrequency(row.frequency);
        record.setStartOperateTime(GPIOOperateRecord::now());
        record.setLastOperateTime(GPIOOperateRecord::now());
        clock.advance(row.elapsed);
        EXPECT_EQ(record.isTimeToOperation(), row.operates) << &row - rows;
        EXPECT_EQ(record.isTimeToStop(), row.stops) << &row - rows;
    }
}

/// Passes are run by the test, in virtual time; the operator's own worker is parked in its first
/// wait.
class GPIOOperatorTest : public testing::Test {
protected:
    GPIOOperatorTest() : m_Driver(new ("test", __LINE__) FakeGPIO) {
        m_Operator.setGPIO(SafePointer<IGPIO>(m_Driver));
        ThreadCalls::kept = true;
        ThreadCalls::take();
    }
    ~GPIOOperatorTest() noexcept override { ThreadCalls::kept = false; }

    std::string journalAfter(int passes) {
        for (int i = 0; i < passes; ++i) {
            m_Operator.execOperation();
        }
        return m_Driver->takeJournal();
    }

    bool hasRecord(int group, int bit) { return !m_Operator.findRecord(group, bit).isNull(); }

    ManualClock m_Clock;
    FakeGPIO* m_Driver; // owned by the operator
    GPIOOperator m_Operator;
};

TEST_F(GPIOOperatorTest, CarriesOutEachModeOnThePassGrid) {
    const struct {
        const char* what;
        int mode, level, stopLevel;
        float frequency;
        int timeOut, passes;
        const char* journal;
        bool recordLeft;
    } rows[] = {
        {"hold for good", HOLD, 1, 0, 0, 0, 4, "0:2/1=1", false},
        {"hold for a time", HOLD, 1, 0, 0, 420, 12, "0:2/1=1 450:2/1=0", false},
        {"hold to a boundary", HOLD, 1, 0, 0, 500, 12, "0:2/1=1 500:2/1=0 550:2/1=0", false},
        {"toggle, stop level", TOGGLE, 1, 2, 4, 800, 20,
         "0:2/1=1 250:2/1=0 500:2/1=1 750:2/1=0 850:2/1=1", false},
        {"toggle off the grid", TOGGLE, 0, 0, 7, 0, 8, "0:2/1=0 150:2/1=1 300:2/1=0", true},
        {"toggle at every pass", TOGGLE, 7, 0, 0, 0, 3, "0:2/1=7 50:2/1=0 100:2/1=1 150:2/1=0",
         true},
        {"hold for less than no time", HOLD, 1, 0, 0, -1, 2, "0:2/1=1 50:2/1=0", false},
        {"pulse", PULSE, 0, 0, 5, 900, 4, "0:2/1=0 10:2/1=1", false},
        {"unknown, with time-out", 4, 1, 0, 9, 60, 3, "0:2/1=1 100:2/1=0", false},
        {"unknown, for good", 0, 1, 0, 9, 0, 9, "0:2/1=1", true},
        {"longest time-out", HOLD, 1, 0, 0, 2147484, 20, "0:2/1=1", true},
    };
    for (const auto& row : rows) {
        m_Driver->restartJournal();
        EXPECT_EQ(
            m_Operator.set(2, 1, row.mode, row.level, row.stopLevel, row.frequency, row.timeOut),
            1);
        EXPECT_EQ(journalAfter(row.passes), row.journal) << row.what;
        EXPECT_EQ(hasRecord(2, 1), row.recordLeft) << row.what;
        m_Operator.set(2, 1, HOLD, 0, 0, 0, 0);
    }
}

TEST_F(GPIOOperatorTest, StopsOneRecordAPassInKeyOrder) {
    m_Operator.set(1, 0, HOLD, 1, 0, 0, 80);
    m_Operator.set(0, 9, HOLD, 1, 0, 0, 80);
    m_Operator.set(0, 3, TOGGLE, 1, 0, 0, 0);
    m_Driver->takeJournal();
    EXPECT_EQ(journalAfter(4), "50:0/3=0 100:0/3=1 100:0/9=0 150:0/3=0 150:1/0=0 200:0/3=1");
    EXPECT_EQ(GPIOOperator::getRecordKey(1, 5), 65541);
    EXPECT_EQ(GPIOOperator::getRecordKey(-1, 1), -65535);
}

TEST_F(GPIOOperatorTest, RestartsTheRecordOfALine) {
    m_Operator.set(0, 1, TOGGLE, 1, 0, 4, 600);
    const auto record = m_Operator.findRecord(0, 1);
    journalAfter(7);
    m_Operator.set(0, 1, HOLD, 0, 1, 0, 300);
    EXPECT_EQ(record.operator->(), m_Operator.findRecord(0, 1).operator->());
    m_Operator.set(0, 1, PULSE, 1, 0, 0, 0);
    EXPECT_TRUE(hasRecord(0, 1)) << "a pulse leaves the running operation alone";
    EXPECT_EQ(journalAfter(9), "350:0/1=0 350:0/1=1 360:0/1=0 660:0/1=1");
}

TEST_F(GPIOOperatorTest, RunsTheWorkerWhileThereAreRecords) {
    m_Operator.set(0, 1, HOLD, 1, 0, 0, 40);
    EXPECT_EQ(ThreadCalls::take(), "running start ");
    m_Operator.set(0, 2, TOGGLE, 1, 0, 1, 0);
    m_Operator.set(0, 2, TOGGLE, 0, 0, 1, 0);
    EXPECT_EQ(ThreadCalls::take(), "running running ");
    m_Operator.set(0, 2, HOLD, 0, 0, 0, 0);
    EXPECT_EQ(journalAfter(1), "0:0/1=1 0:0/2=1 0:0/2=0 0:0/2=0 50:0/1=0");
    EXPECT_EQ(ThreadCalls::take(), "") << "neither another record's end nor a pass stops it";
    m_Operator.set(5, 5, HOLD, 0, 0, 0, 0);
    EXPECT_EQ(ThreadCalls::take(), "stop ") << "a cancellation that finds no record does";

    ThreadCalls::late = true;
    EXPECT_EQ(m_Operator.set(0, 1, HOLD, 1, 0, 0, 40), 1);
    EXPECT_TRUE(hasRecord(0, 1));
    EXPECT_EQ(ThreadCalls::take(), "running start ");
    ThreadCalls::late = false;

    m_Operator.set(0, 1, HOLD, 0, 0, 0, 0);
    m_Driver->takeJournal();
    for (const int flag : {1, 0}) {
        ThreadCalls::refuses = true;
        GlobalEnv::getInstance()->setPrintFlag(flag);
        testing::internal::CaptureStdout();
        EXPECT_EQ(m_Operator.set(0, 1, TOGGLE, 1, 0, 1, 0), 0);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  flag != 0 ? "start gpio thread fail\n" : "");
        EXPECT_EQ(m_Driver->takeJournal(), "50:0/1=1");
        EXPECT_FALSE(hasRecord(0, 1));
    }
}

// The worker drives between the caller's own drive and the change of the record: the level that
// the caller asked for must be the one that stays.
TEST_F(GPIOOperatorTest, TheCallersLevelOutlivesAPassInBetween) {
    const struct {
        int mode, timeOut;
        bool refuses; // to be started again after another caller's stop
        bool recordLeft;
        const char* calls;
    } rows[] = {{HOLD, 0, false, false, "stop "},
                {HOLD, 5000, false, true, "running stop running start "},
                {TOGGLE, 5000, false, true, "running stop running start "},
                {TOGGLE, 5000, true, false, "running stop running "}};
    for (const auto& row : rows) {
        m_Operator.set(0, 1, HOLD, 0, 0, 0, 40); // over at the next pass
        m_Operator.set(0, 2, TOGGLE, 0, 0, 0, 0);
        int drives = 0;
        Gate stops;
        std::thread stopper;
        m_Driver->m_OnDrive = [&](FakeGPIO::Line, int) {
            if (++drives == 1) {
                m_Operator.execOperation();
            } else if (drives == 3) {
                stopper = std::thread([&] { m_Operator.stop(); });
                EXPECT_TRUE(stops.wait());
            }
        };
        ThreadCalls::onStop = [&] {
            ThreadCalls::refuses = row.refuses;
            stops.open();
        };
        ThreadCalls::take();
        EXPECT_EQ(m_Operator.set(0, 1, row.mode, 1, 0, 1, row.timeOut), row.refuses ? 0 : 1);
        stopper.join();
        ThreadCalls::onStop = nullptr;
        int level = -1;
        m_Operator.get(0, 1, level);
        EXPECT_EQ(level, 1) << &row - rows;
        EXPECT_EQ(hasRecord(0, 1), row.recordLeft) << &row - rows;
        EXPECT_EQ(ThreadCalls::take(), row.calls);

        drives = 0; // now the worker drives the other line alone: no reason to drive twice
        m_Operator.set(0, 1, row.mode, 1, 0, 1, row.timeOut);
        EXPECT_EQ(drives, 2);
        m_Driver->m_OnDrive = nullptr;
    }
}

// A pass hangs in the driver, and what it drives changes last.
TEST_F(GPIOOperatorTest, AHangingPassKeepsNoLineFromBeingDriven) {
    m_Operator.set(0, 1, HOLD, 1, 0, 0, 40);
    m_Driver->takeJournal();
    Gate driven;
    std::thread siren;
    std::thread again;
    m_Driver->m_OnDrive = [&](FakeGPIO::Line, int level) {
        if (level == 1) {
            driven.open();
            return;
        }
        siren = std::thread([&] { m_Operator.set(0, 2, HOLD, 1, 0, 0, 0); });
        EXPECT_TRUE(driven.wait(1));
        again = std::thread([&] { m_Operator.set(0, 1, HOLD, 1, 0, 0, 5000); });
        EXPECT_TRUE(driven.wait(2));
        m_Driver->setLevel(0, 1, 0);
    };
    m_Operator.execOperation();
    siren.join();
    again.join();
    EXPECT_EQ(m_Driver->takeJournal(), "50:0/1=0 50:0/2=1 50:0/1=1 50:0/1=1");
}

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
            gpio.set(0, 1, HOLD, 0, 0, 0, 0);
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
