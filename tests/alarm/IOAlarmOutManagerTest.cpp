#include "alarm/IOAlarmOutManager.h"

#include "alarm/IOAlarmInManager.h"
#include "platform/Diagnostics.h"
#include "support/AlarmBench.h"
#include "support/AlarmRecorder.h"
#include "support/ManualClock.h"

#include <atomic>
#include <thread>

namespace {

constexpr auto STEADY = AlarmOutMode::Steady;
constexpr auto FLASH = AlarmOutMode::Flash;
constexpr auto PULSE = AlarmOutMode::Pulse;
constexpr auto DIRECT = AlarmOutMode::Direct;
constexpr auto INVERTED = AlarmOutMode::Inverted;

class IOAlarmOutManagerTest : public AlarmBench {
protected:
    // Output 1 is active at level 1, output 2 at level 0; the second one with id 1 does not count.
    IOAlarmOutManagerTest()
        : AlarmBench({{1, 0, 0, 1}}, {{1, 2, 0, 1}, {2, 2, 1, 0}, {1, 2, 7, 1}}) {
        wire(m_Manager);
        EXPECT_EQ(m_Driver->takeJournal(), "") << "nothing is driven before the first trigger";
    }
    ~IOAlarmOutManagerTest() noexcept override {}

    IOAlarmOutManager m_Manager;
};

// Each row: a new mode, a trigger, four passes, a cancellation. A flash always begins at level 1.
TEST_F(IOAlarmOutManagerTest, DrivesTheLineByTheMode) {
    const struct {
        int id;
        AlarmOutMode mode;
        const char* triggered;
        const char* cancelled;
    } rows[] = {
        {1, {}, "0:2/0=1", "200:2/0=0"},
        {2, {}, "0:2/1=0", "200:2/1=1"},
        {1, {STEADY, INVERTED, 0, 0}, "0:2/0=0", "200:2/0=1"},
        {2, {STEADY, INVERTED, 0, 0}, "0:2/1=1", "200:2/1=0"},
        {1, {STEADY, DIRECT, 120, 0}, "0:2/0=1 150:2/0=0", "200:2/0=0"},
        {2, {STEADY, INVERTED, 120, 0}, "0:2/1=1 150:2/1=0", "200:2/1=0"},
        {1, {PULSE, DIRECT, 0, 0}, "0:2/0=1 10:2/0=0", "210:2/0=0"},
        {2, {PULSE, DIRECT, 0, 0}, "0:2/1=0 10:2/1=1", "210:2/1=1"},
        {1, {FLASH, DIRECT, 0, 8}, "0:2/0=1 150:2/0=0", "200:2/0=0"},
        {2, {FLASH, DIRECT, 180, 11}, "0:2/1=1 100:2/1=0 200:2/1=1", "200:2/1=1"},
        {1, {FLASH, INVERTED, 180, 11}, "0:2/0=1 100:2/0=0 200:2/0=1", "200:2/0=1"},
        {2, {FLASH, INVERTED, 180, 11}, "0:2/1=1 100:2/1=0 200:2/1=0", "200:2/1=0"},
        {1, {static_cast<AlarmOutMode::Mode>(4), DIRECT, 90, 1}, "", "200:2/0=0"},
        {1, {static_cast<AlarmOutMode::Mode>(0), INVERTED, 0, 0}, "", "200:2/0=1"},
    };
    for (const auto& row : rows) {
        ManualClock clock;
        m_Driver->restartJournal();
        EXPECT_EQ(m_Manager.setAlarmOutMode(row.id, row.mode), 1);
        EXPECT_EQ(m_Driver->takeJournal(), "0:" + std::string(row.cancelled).substr(4))
            << "a new mode switches the output off";
        m_Manager.triggerAlarm(row.id);
        for (int i = 0; i < 4; ++i) {
            m_Operator->execOperation();
        }
        EXPECT_EQ(m_Driver->takeJournal(), row.triggered) << &row - rows;
        m_Manager.cancelAlarm(row.id);
        EXPECT_EQ(m_Driver->takeJournal(), row.cancelled) << &row - rows;
        EXPECT_TRUE(m_Operator->findRecord(2, row.id - 1).isNull());
    }
}

TEST_F(IOAlarmOutManagerTest, KeepsAModePerOutput) {
    AlarmOutMode mode(FLASH, INVERTED, 8, 9.0F);
    EXPECT_EQ(m_Manager.getAlarmOutMode(3, mode), 0);
    EXPECT_EQ(mode.getTimeout(), 8);
    m_Manager.triggerAlarm(3);
    m_Manager.cancelAlarm(3);
    EXPECT_EQ(m_Driver->takeJournal(), "");

    ManualClock clock;
    m_Manager.setAlarmOutMode(1, {FLASH, DIRECT, 0, 20.0F});
    m_Manager.triggerAlarm(1);
    m_Manager.triggerAlarm(1);
    m_Manager.setAlarmOutMode(1, {STEADY, INVERTED, 70, 2.5F});
    EXPECT_TRUE(m_Operator->findRecord(2, 0).isNull()) << "a new mode ends what runs";
    m_Manager.getAlarmOutMode(1, mode);
    EXPECT_EQ(mode.getMode(), STEADY);
    EXPECT_EQ(mode.getValidSignal(), INVERTED);
    EXPECT_EQ(mode.getTimeout(), 70);
    EXPECT_EQ(mode.getFrequency(), 2.5F);

    const std::string values = "mode=2,validSignal=1,Frequency=2.500000,timeout=700\n";
    const std::string call = "IOAlarmOutManager::setAlarmOutMode,alarmId=";
    GlobalEnv::getInstance()->setPrintFlag(1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(m_Manager.setAlarmOutMode(2, {FLASH, INVERTED, 700, 2.5F}), 1);
    EXPECT_EQ(m_Manager.setAlarmOutMode(9, {FLASH, INVERTED, 700, 2.5F}), 0);
    GlobalEnv::getInstance()->setPrintFlag(0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              call + "2,," + values + "333\t" + call + "2,," + values + //
                  call + "9,," + values + "222\t" + call + "9,," + values);
}

// All callers at once, with a worker that really runs: for the thread sanitizer.
TEST_F(IOAlarmOutManagerTest, BothManagersTakeManyCallers) {
    IOAlarmInManager inputs;
    wire(inputs);
    AlarmRecorder messages;
    inputs.addListener(&messages);

    std::atomic<int> passes{0};
    m_Driver->m_OnDrive = [&](FakeGPIO::Line line, int) { passes += line.second == 1 ? 1 : 0; };
    m_Manager.setAlarmOutMode(2, {FLASH, DIRECT, 0, 0.0F});
    m_Manager.triggerAlarm(2);
    passes = 0;
    const auto repeat = [&](auto action) {
        return std::thread([&passes, action] {
            for (int i = 0; passes < 3; ++i) {
                action(i);
            }
        });
    };
    std::thread callers[] = {
        repeat([&](int i) {
            m_Manager.setAlarmOutMode(1, {i % 2 != 0 ? FLASH : STEADY, DIRECT, i % 3, 50.0F});
            m_Manager.triggerAlarm(1);
        }),
        repeat([&](int) { m_Manager.cancelAlarm(1); }),
        repeat([&](int i) {
            m_Driver->setLevel(0, 0, i % 2);
            inputs.notifyAlarmConsumers(false);
        }),
        repeat([&](int) { inputs.notifyAlarmConsumers(false); }),
        repeat([&](int i) { inputs.setValidLevel(1, i % 2); }),
    };
    for (std::thread& caller : callers) {
        caller.join();
    }
    m_Manager.cancelAlarm(1);
    m_Manager.cancelAlarm(2); // ends the worker, which counts its passes in a local variable
    EXPECT_NE(messages.take(), "");
}

} // namespace
