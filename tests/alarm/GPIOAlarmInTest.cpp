#include "alarm/GPIOAlarmIn.h"

#include "platform/Diagnostics.h"
#include "support/AlarmBench.h"

namespace {

class GPIOAlarmInTest : public AlarmBench {
protected:
    GPIOAlarmInTest() : AlarmBench({{5, 0, 3, 0}, {6, 0, 3, 1}}, {}) {}

    /// An input on line 0/3.
    GPIOAlarmIn makeInput(int configuredLevel) const {
        const auto list = m_Detail->getAlarmInConfigItemList();
        const auto& items = list->getHardwareConfigItemList();
        const auto& item = configuredLevel == 0 ? items.front() : items.back();
        return GPIOAlarmIn(m_Operator, dynamic_pointer_cast<GPIOSignalConfigItem>(item));
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
    }
}

TEST_F(GPIOAlarmInTest, TheLevelFoundAtASettingIsNoChange) {
    GPIOAlarmIn input = makeInput(0);
    int alarm = 9;
    m_Driver->setLevel(0, 3, 1);
    input.setValidLevel(1);
    EXPECT_EQ(input.checkAlarmValid(1, alarm), 0);
    GPIOAlarmIn other = makeInput(1); // keeps the level itself, not what it means
    other.setValidLevel(0);
    EXPECT_EQ(other.checkAlarmValid(1, alarm), 1);
    m_Driver->breakLine(0, 3);
    for (const int flag : {0, 1}) {
        GlobalEnv::getInstance()->setPrintFlag(flag);
        testing::internal::CaptureStdout();
        input.setValidLevel(0);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), flag != 0 ? "getLevel() error\n" : "");
        EXPECT_EQ(input.getValidLevel(), 0);
    }
    GlobalEnv::getInstance()->setPrintFlag(0);
    EXPECT_EQ(input.checkAlarmValid(0, alarm), 1);
    EXPECT_EQ(alarm, 1);
}

} // namespace
