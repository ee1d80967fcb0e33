#include "config/MachineConfigurationDetail.h"

#include "config/ConfigFileNameConst.h"
#include "config/Monitor.h"
#include "support/DocumentTest.h"

namespace {

using Detail = MachineConfigurationDetail;
using Files = ConfigFileNameConst;

class SampleBoard : public DocumentTest {
protected:
    SampleBoard() : DocumentTest(NVRHW_SAMPLE_BOARD) {}

    static int count(const SafePointer<HardwareConfigItemList>& list) {
        return static_cast<int>(list->getHardwareConfigItemList().size());
    }

    Detail m_Detail;
};

TEST_F(SampleBoard, MonitorAnswersByItsOwnResults) {
    std::vector<MonitorParam> monitors;
    Monitor monitor;
    ASSERT_NE(monitor.getAllMonitorParam(monitors), 0);
    ASSERT_FALSE(monitors.empty());
    EXPECT_EQ(monitor.setMonitorParam(monitors[0]), 1);
    monitors[0].setBrightness(101);
    EXPECT_EQ(monitor.setMonitorParam(monitors[0]), -1);
    m_Log.expectOne({"monitor 0: brightness must be from 0 to 100, not 101"});
    EXPECT_NE(monitor.getMonitorType(1, monitors[0]), 0);
    EXPECT_EQ(monitor.getMonitorType(4, monitors[0]), 0);
}

TEST_F(SampleBoard, DetailStopsAtTheFirstUnreadableFile) {
    write(Files::getHardwareConfigFileName(), "<H><GPIOAlarmIn/></H>");
    write(Files::getMachineInfoFileName(), "[machine");
    write(Files::getSoftwarePackageFileName(), "[package");
    EXPECT_EQ(m_Detail.init(), 0);
    m_Log.expectOne({"hardwareConfig.xml:1: H has no element GPIOAlarmOut"});
    EXPECT_EQ(count(m_Detail.getAlarmInConfigItemList()), 0);
    testing::internal::CaptureStdout(); // an empty pointer is reported there, and logged
    for (const auto list : {&Detail::getAlarmOutConfigItemList, &Detail::getLEDConfigItemList,
                            &Detail::getRS232ConfigItemList, &Detail::getRS485ConfigItemList}) {
        EXPECT_THROW((m_Detail.*list)(), XQRuntimeError);
    }
    testing::internal::GetCapturedStdout();
    m_Log.expect(4, {"SafePointer: 22HardwareConfigItemList Construct from NULL <T>pointer"});
    write(Files::getHardwareConfigFileName(), "<H><GPIOAlarmIn/><GPIOAlarmOut/></H>");
    EXPECT_EQ(m_Detail.init(), 0);
    m_Log.expectOne({"machineinfo.ini:1: neither"});
    EXPECT_EQ(count(m_Detail.getAlarmOutConfigItemList()), 0);
    write(Files::getMachineInfoFileName(), "[machine]\nmodel=a");
    EXPECT_EQ(m_Detail.init(), 0);
    m_Log.expectOne({"packageversion.ini:1: neither"});
    EXPECT_EQ(m_Detail.getMachineInfo().getModel(), "a");
    write(Files::getSoftwarePackageFileName(), "[package]\nname=b");
    EXPECT_NE(m_Detail.init(), 0);
    EXPECT_EQ(m_Detail.getSoftwarePackage().getName(), "b");
}

} // namespace
