#include "alarm/IOAlarmInManager.h"

#include "alarm/GPIOAlarmIn.h"
#include "alarm/IOAlarmInListener.h"
#include "platform/Diagnostics.h"
#include "platform/Time.h"
#include "support/AlarmBench.h"
#include "support/AlarmRecorder.h"

#include <unistd.h>

namespace {

class GPIOAlarmInTest : public AlarmBench {
protected:
    GPIOAlarmInTest() : AlarmBench({}, {}) {}

    /// An input on line 0/3.
    GPIOAlarmIn makeInput(int configuredLevel) const {
        return GPIOAlarmIn(m_Operator, SafePointer<GPIOSignalConfigItem>(
                                           new GPIOSignalConfigItem(5, 0, 3, configuredLevel)));
    }
};

TEST_F(GPIOAlarmInTest, JudgesLevelsAndReportsChangesOnce) {
    const struct {
        int configured, valid, level, alarm;
    } rows[] = {{0, 0, 0, 1}, {0, 0, 1, 0}, {1, 0, 0, 0}, {1, 0, 1, 1},
                {0, 1, 0, 0}, {0, 1, 1, 1}, {1, 1, 0, 1}, {1, 1, 1, 0}};
    for (const auto& row : rows) {
        GPIOAlarmIn input = makeInput(row.configured);
        m_Driver->breakLine(0, 3);
        input.setValidLevel(row.valid); // without a line, the last state stays unknown
        int alarm = 9;
        EXPECT_EQ(input.checkAlarmValid(alarm), 0);
        m_Driver->breakLine(0, 3, false);

        EXPECT_EQ(input.checkAlarmValid(row.level, alarm), 1);
        EXPECT_EQ(alarm, row.alarm) << &row - rows;
        alarm = 9;
        EXPECT_EQ(input.checkAlarmValid(row.level, alarm), 0);
        EXPECT_EQ(alarm, 9) << "no change, no answer";
        m_Driver->setLevel(0, 3, 1 - row.level);
        EXPECT_EQ(input.checkAlarmValid(alarm), 1);
        EXPECT_EQ(alarm, 1 - row.alarm);

        GPIOAlarmIn other = makeInput(row.configured);
        m_Driver->setLevel(0, 3, row.level);
        other.setValidLevel(row.valid); // keeps the level found, not what it means
        EXPECT_EQ(other.checkAlarmValid(row.level, alarm), row.configured);
    }
}

TEST_F(GPIOAlarmInTest, TakesASettingWithoutALine) {
    GPIOAlarmIn input = makeInput(0);
    m_Driver->breakLine(0, 3);
    for (const int flag : {1, 0}) {
        GlobalEnv::getInstance()->setPrintFlag(flag);
        testing::internal::CaptureStdout();
        input.setValidLevel(flag);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), flag != 0 ? "getLevel() error\n" : "");
        EXPECT_EQ(input.getValidLevel(), flag);
    }
}

class IOAlarmInManagerTest : public AlarmBench {
protected:
    IOAlarmInManagerTest()
        : AlarmBench({{1, 0, 0, 1}, {2, 0, 1, 0}, {7, 1, 4, 1}, {2, 1, 5, 1}}, {}) {
        wire(m_Manager);
        m_ListenerId = m_Manager.addListener(&m_Listener);
    }
    ~IOAlarmInManagerTest() noexcept override {}

    std::string notify() {
        EXPECT_EQ(m_Manager.notifyAlarmConsumers(false), 0);
        return m_Listener.take();
    }

    IOAlarmInManager m_Manager;
    AlarmRecorder m_Listener;
    int m_ListenerId = 0;
};

// Both items with id 2 are read, and the input of the first judges both: level 0 of either line is
// alarm for it.
TEST_F(IOAlarmInManagerTest, ReportsEveryInputOnceAndThenItsChanges) {
    m_Driver->breakLine(1, 4);
    EXPECT_EQ(m_Manager.notifyAlarmConsumers(true), 0);
    EXPECT_EQ(m_Listener.take(), "");
    EXPECT_EQ(notify(), "1=0 2=1");
    EXPECT_EQ(notify(), "");
    m_Driver->setLevel(0, 0, 1);
    m_Driver->breakLine(1, 4, false);
    EXPECT_EQ(notify(), "1=1 7=0");
    m_Driver->setLevel(1, 5, 1);
    EXPECT_EQ(notify(), "2=0");
    EXPECT_EQ(notify(), "2=1 2=0");
    m_Manager.init();
    m_Driver->setLevel(1, 5, 0);
    EXPECT_EQ(notify(), "2=1") << "a second init keeps the inputs and their states";

    const double before = XQDeviceTime::getSeconds();
    m_Driver->setLevel(1, 4, 1);
    GlobalEnv::getInstance()->setPrintFlag(1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(notify(), "7=1");
    GlobalEnv::getInstance()->setPrintFlag(0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "IOAlarmInManager::notifyAlarmConsumers(0),alarmFlag=1\n");
    EXPECT_EQ(m_Listener.m_Last.getAlarmMajorType(), 1);
    EXPECT_EQ(m_Listener.m_Last.getAlarmMinorType(), 1);
    EXPECT_NEAR(static_cast<double>(m_Listener.m_Last.getAlarmTime()), before, 10.0);

    m_Manager.uninit();
    m_Driver->setLevel(1, 4, 0);
    EXPECT_EQ(notify(), "");
    EXPECT_EQ(m_Manager.findListener(m_ListenerId), &m_Listener);
    EXPECT_EQ(m_Manager.removeListener(m_ListenerId), 1);
}

TEST_F(IOAlarmInManagerTest, KeepsAValidLevelPerInput) {
    int level = 9;
    EXPECT_EQ(m_Manager.setValidLevel(3, 1) + m_Manager.getValidLevel(3, level), 0);
    EXPECT_EQ(level, 9);
    EXPECT_EQ(m_Manager.setValidLevel(7, 1) + m_Manager.getValidLevel(7, level), 2);
    EXPECT_EQ(level, 1);
    EXPECT_EQ(notify(), "1=0 2=1 7=1");

    std::vector<IOInfo> infos(3); // what was in it goes
    const auto list = m_Detail->getAlarmInConfigItemList();
    NS_IOAlarmInManager::changeGPIOSignalConfigItem2IOInfo(
        {dynamic_pointer_cast<GPIOSignalConfigItem>(list->getHardwareConfigItemList().back())},
        infos);
    ASSERT_EQ(infos.size(), 1U);
    EXPECT_EQ(infos[0].getId() * 100 + infos[0].getGroupId() * 10 + infos[0].getBitPosion(), 215);
}

// A listener that calls back into the manager would wait for itself for ever.
TEST_F(IOAlarmInManagerTest, AListenerThatCallsBackIsToldSo) {
    m_Listener.m_OnMessage = [this] { m_Manager.setValidLevel(1, 1); };
    AlarmRecorder second;
    m_Manager.addListener(&second);
    testing::internal::CaptureStderr();
    notify();
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("holds the lock it asks for, since IOAlarm"), std::string::npos) << log;
    EXPECT_EQ(second.take(), "1=0 2=1 7=0") << "the others are served";
}

// While one notification is in the driver, others come, read and judge: the levels that it has read
// are old then, and when that happens twice, its own task is done.
TEST_F(IOAlarmInManagerTest, ReadsAgainWhenOthersCameFirst) {
    notify();
    int level = 0;
    const struct {
        int overtaken, readings;
        const char* messages;
    } rows[] = {{0, 1, ""}, {1, 3, "1=1"}, {2, 4, "1=0 1=1"}, {1, 3, "1=0"}};
    for (const auto& row : rows) {
        int left = row.overtaken;
        int readings = 0;
        bool inside = false;
        m_Driver->m_OnBatch = [&] {
            ++readings;
            m_Manager.notifyAlarmConsumers(true); // judges nothing, and therefore does not count
            if (!inside && left-- > 0) {
                inside = true;
                m_Driver->setLevel(0, 0, level = 1 - level);
                m_Manager.notifyAlarmConsumers(false);
                inside = false;
            }
        };
        EXPECT_EQ(notify(), row.messages);
        EXPECT_EQ(readings, row.readings);
    }
}

/// Writes down what is asked of it, and answers 7 where it is told to fail.
class FakeDetect : public IGPIODetect {
public:
    NVRHW_TRACKED

    int open() override { return call("open"); }
    void close() override { call("close"); }
    int setSignalHandler(int signal, Handler handler) override {
        return call(handler == &IOAlarmInListener::notifyAlarm ? std::to_string(signal) : "?");
    }
    int addDetectLine(int processId, int group, int bit) override {
        return call(processId != getpid() ? "?"
                                          : std::to_string(group) + "/" + std::to_string(bit));
    }
    int removeDetectLine(int, int, int) override { return call("remove"); }
    int startDetect() override { return call("start"); }
    int stopDetect() override { return call("stop"); }

    std::string m_Failing;
    std::string m_Journal;

private:
    int call(const std::string& what) {
        m_Journal += what + " ";
        return what == m_Failing ? 7 : 0;
    }
};

TEST_F(IOAlarmInManagerTest, AListenerThatCannotStartClosesTheDetector) {
    auto* detect = new ("test", __LINE__) FakeDetect;
    IOAlarmInListener listener{SafePointer<IGPIODetect>(detect)};
    listener.setMachineConfigurationDetail(m_Detail);
    const std::pair<const char*, const char*> rows[] = {
        {"stop", "open 10 0/0 0/1 1/4 1/5 start stop "},
        {"open", "open stop "},
        {"10", "open 10 close stop "},
        {"1/4", "open 10 0/0 0/1 1/4 close stop "},
        {"start", "open 10 0/0 0/1 1/4 1/5 start close stop "}};
    for (const auto& [failing, calls] : rows) {
        detect->m_Failing = failing;
        const bool starts = detect->m_Failing == "stop";
        EXPECT_EQ(listener.start(), starts ? 1 : 0);
        EXPECT_EQ(listener.stop(), starts ? 7 : 0);
        EXPECT_EQ(std::exchange(detect->m_Journal, {}), calls);
    }
}

} // namespace
