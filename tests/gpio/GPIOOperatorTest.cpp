#include "gpio/GPIOOperator.h"

#include "platform/Diagnostics.h"
#include "support/FakeGPIO.h"
#include "support/Gate.h"
#include "support/ManualClock.h"

#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace {

std::string s_ThreadCalls;
bool s_Late = false;    // the thread runs, but does not say so yet
bool s_Refuses = false; // the thread cannot be started
std::function<void()> s_OnRunning;

std::string takeCalls() { return std::exchange(s_ThreadCalls, {}); }

} // namespace

// The thread class of this program takes the place of the board layer's. It runs nothing: passes
// are run by the tests.
struct GThread::Impl {
    bool runs = false;
};
GThread::GThread(function<int>, const std::string& name, function<int>, function<int>) // NOLINT
    : m_Impl(new Impl) {
    EXPECT_EQ(name, "GPIOOperationThread");
}
GThread::~GThread() = default;
int GThread::running() const {
    s_ThreadCalls += "running ";
    if (s_OnRunning) {
        s_OnRunning();
    }
    return m_Impl->runs && !s_Late ? 1 : 0;
}
int GThread::start() {
    s_ThreadCalls += "start ";
    const bool starts = !m_Impl->runs && !s_Refuses;
    m_Impl->runs = m_Impl->runs || starts;
    return starts ? 1 : 0;
}
void GThread::stop() {
    s_ThreadCalls += "stop ";
    m_Impl->runs = false;
}
int GThread::emptyFun() { return 0; }

namespace {

constexpr int HOLD = 1;
constexpr int TOGGLE = 2;
constexpr int PULSE = 3;

/// Passes are run by the test, in virtual time.
class GPIOOperatorTest : public testing::Test {
protected:
    GPIOOperatorTest() : m_Driver(new ("test", __LINE__) FakeGPIO) {
        m_Operator.setGPIO(SafePointer<IGPIO>(m_Driver));
        takeCalls();
    }
    ~GPIOOperatorTest() noexcept override {}

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
        int timeOut;
        int passes;
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
    EXPECT_EQ(takeCalls(), "running start ");
    m_Operator.set(0, 2, TOGGLE, 1, 0, 1, 0);
    m_Operator.set(0, 2, TOGGLE, 0, 0, 1, 0);
    EXPECT_EQ(takeCalls(), "running running ");
    m_Operator.set(0, 2, HOLD, 0, 0, 0, 0);
    EXPECT_EQ(journalAfter(1), "0:0/1=1 0:0/2=1 0:0/2=0 0:0/2=0 50:0/1=0");
    EXPECT_EQ(takeCalls(), "") << "neither another record's end nor a pass stops it";
    m_Operator.set(5, 5, HOLD, 0, 0, 0, 0);
    EXPECT_EQ(takeCalls(), "stop ") << "a cancellation that finds no record does";

    s_Late = true;
    EXPECT_EQ(m_Operator.set(0, 1, HOLD, 1, 0, 0, 40), 1);
    EXPECT_TRUE(hasRecord(0, 1));
    EXPECT_EQ(takeCalls(), "running start ");
    s_Late = false;

    m_Operator.set(0, 1, HOLD, 0, 0, 0, 0);
    m_Driver->takeJournal();
    s_Refuses = true;
    for (const int flag : {1, 0}) {
        GlobalEnv::getInstance()->setPrintFlag(flag);
        testing::internal::CaptureStdout();
        EXPECT_EQ(m_Operator.set(0, 1, TOGGLE, 1, 0, 1, 0), 0);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  flag != 0 ? "start gpio thread fail\n" : "");
        EXPECT_EQ(m_Driver->takeJournal(), "50:0/1=1");
        EXPECT_FALSE(hasRecord(0, 1));
    }
    s_Refuses = false;

    takeCalls();
    { const GPIOOperator other; }
    EXPECT_EQ(takeCalls(), "stop ") << "when it goes";
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
                {TOGGLE, 5000, true, false, "running stop running start "}};
    for (const auto& row : rows) {
        m_Operator.set(0, 1, HOLD, 0, 0, 0, 40); // over at the next pass
        m_Operator.set(0, 2, TOGGLE, 0, 0, 0, 0);
        int drives = 0;
        m_Driver->m_OnDrive = [&](FakeGPIO::Line, int) {
            if (++drives == 1) {
                m_Operator.execOperation();
            } else if (drives == 3) { // between the insertion of the record and the look after it
                s_Refuses = row.refuses;
                m_Operator.stop();
            }
        };
        takeCalls();
        EXPECT_EQ(m_Operator.set(0, 1, row.mode, 1, 0, 1, row.timeOut), row.refuses ? 0 : 1);
        s_Refuses = false;
        int level = -1;
        m_Operator.get(0, 1, level);
        EXPECT_EQ(level, 1) << &row - rows;
        EXPECT_EQ(hasRecord(0, 1), row.recordLeft) << &row - rows;
        EXPECT_EQ(takeCalls(), row.calls);

        drives = 0; // now the worker drives the other line alone: no reason to drive twice
        m_Operator.set(0, 1, row.mode, 1, 0, 1, row.timeOut);
        EXPECT_EQ(drives, 2);
        m_Driver->m_OnDrive = nullptr;
    }
}

// One caller takes out the last record and is kept from its stop() by somebody who holds the
// control lock, until another caller, whom the worker's start lies behind, has put in a new record.
TEST_F(GPIOOperatorTest, ARecordThatComesBeforeTheStopIsServed) {
    m_Operator.set(0, 1, HOLD, 0, 0, 0, 40);
    takeCalls();
    Gate asked;
    Gate inserted;
    std::thread inserter;
    std::thread holder;
    s_OnRunning = [&] {
        asked.open();
        EXPECT_TRUE(asked.count() != 2 || inserted.wait());
    };
    int drives = 0;
    m_Driver->m_OnDrive = [&](FakeGPIO::Line line, int) {
        if (line.second == 1 && ++drives == 1) {
            m_Operator.execOperation();
        } else if (line.second == 1 && drives == 3) { // with the record lock held
            inserter = std::thread([&] {
                m_Operator.set(0, 3, TOGGLE, 1, 0, 1, 0);
                inserted.open();
            });
            EXPECT_TRUE(asked.wait(1));
            holder = std::thread([&] { m_Operator.start(); });
            EXPECT_TRUE(asked.wait(2));
        }
    };
    m_Operator.set(0, 1, HOLD, 1, 0, 0, 0);
    inserter.join();
    holder.join();
    s_OnRunning = nullptr;
    EXPECT_EQ(takeCalls(), "running running stop running start ");
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

} // namespace
