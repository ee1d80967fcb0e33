#include "config/MachineConfigurationDetail.h"

#include "ability/DeviceAbilityCollector.h"
#include "config/ConfigFileNameConst.h"
#include "config/Monitor.h"
#include "platform/Diagnostics.h"
#include "support/CapturedLog.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// Works on a copy of the sample board.
class SampleBoard : public testing::Test {
protected:
    SampleBoard() {
        fs::copy(NVRHW_SAMPLE_BOARD, m_Root.path(), fs::copy_options::recursive);
        GlobalEnv::getInstance()->setRootDirectory(m_Root.path());
    }
    ~SampleBoard() override { GlobalEnv::getInstance()->setRootDirectory("/"); }

    /// Replaces a text in a file of the board.
    void edit(const std::string& file, const std::string& from, const std::string& to) {
        std::string text = TempDir::read(m_Root.path(file));
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        m_Root.write(file, text.replace(at, from.size(), to));
    }

    /// The getter raises because its list was not read.
    template <typename Getter> void expectEmpty(Getter getter) {
        testing::internal::CaptureStdout();
        EXPECT_THROW((m_Detail.*getter)(), XQRuntimeError);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "SafePointer Report:22HardwareConfigItemList Construct from NULL <T>pointer\n");
    }

    TempDir m_Root;
    MachineConfigurationDetail m_Detail;
};

/// Every line stands at its inactive level; the number of lines.
int expectIdleLines(const SafePointer<HardwareConfigItemList>& list) {
    int id = 0;
    for (const SafePointer<HardwareConfigItem>& item : list->getHardwareConfigItemList()) {
        const auto line = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        EXPECT_EQ(line->getId(), ++id);
        const std::string file = "/dev/gpiodrv/" + std::to_string(line->getGroup()) + "/" +
                                 std::to_string(line->getBitPosition());
        EXPECT_EQ(TempDir::read(NVRHW_SAMPLE_BOARD + file),
                  line->getValidLevel() == 0 ? "1\n" : "0\n")
            << file;
    }
    return id;
}

TEST_F(SampleBoard, AgreesWithItself) {
    CapturedLog log;
    ASSERT_NE(m_Detail.init(), 0);
    DeviceAbilityCollector collector;
    collector.setAbilityConfigFileName(ConfigFileNameConst::getNVRAbilityFileName());
    collector.setFileSystemFileName(ConfigFileNameConst::getFileSystemFileName());
    ASSERT_NE(collector.init(), 0);
    const NVRDeviceAbility& ability = collector.getDeviceAbility();
    const SafePointer<HardwareConfigItemList> inputs = m_Detail.getAlarmInConfigItemList();
    const SafePointer<HardwareConfigItemList> outputs = m_Detail.getAlarmOutConfigItemList();
    EXPECT_EQ(inputs.operator->(), m_Detail.getAlarmInConfigItemList().operator->());
    EXPECT_EQ(expectIdleLines(inputs), ability.getAlarmInDeviceNumber());
    EXPECT_EQ(expectIdleLines(outputs), ability.getAlarmOutputDeviceNumber());
    const NetworkAbility& network = ability.getNetworkAbility();
    EXPECT_EQ(network.getNetworkCardAbilityList().size(), network.getNetworkCardNum() + 0U);
    const auto& layouts = ability.getLayoutAbility().getLayoutModelList();
    const auto& decoding = ability.getDecodingAbility().getLayoutDecodingAbilityList();
    ASSERT_EQ(decoding.size(), layouts.size());
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        int windows = 0;
        for (const SubWinDecodingAbility& group : decoding[i].getSubWinDecodingAbilityList()) {
            windows += static_cast<int>(group.getSubWinList().size());
        }
        EXPECT_EQ(decoding[i].getLayoutModeID(), layouts[i].getModelId());
        EXPECT_EQ(windows, layouts[i].getPicNumber());
    }
    EXPECT_EQ(layouts.back().getPicNumber(), ability.getMaxChannelNumber());

    std::vector<MonitorParam> monitors;
    ASSERT_NE(Monitor().getAllMonitorParam(monitors), 0);
    ASSERT_EQ(monitors.size(), ability.getMonitorAbilityList().size());
    EXPECT_EQ(m_Detail.getMachineInfo().getModel(), "Thirty-Two Channel Sample");
    EXPECT_EQ(m_Detail.getSoftwarePackage().getComponents().size(), 5U);
    EXPECT_EQ(log.take(), std::vector<std::string>()) << "nothing to complain about";
}

TEST_F(SampleBoard, DetailStopsAtTheFirstUnreadableFile) {
    CapturedLog log;
    const auto machine = [&] { return m_Detail.getMachineInfo().getModel(); };
    const auto package = [&] { return m_Detail.getSoftwarePackage().getName(); };
    const std::string hardware = "hd1/program/config/hardwareConfig.xml";
    edit(hardware, "<GPIOAlarmOut>\n", "<GPIOAlarmOut><item/>\n");
    EXPECT_EQ(m_Detail.init(), 0);
    EXPECT_EQ(m_Detail.getAlarmInConfigItemList()->getHardwareConfigItemList().size(), 16U);
    expectEmpty(&MachineConfigurationDetail::getAlarmOutConfigItemList);
    expectEmpty(&MachineConfigurationDetail::getLEDConfigItemList);
    expectEmpty(&MachineConfigurationDetail::getRS232ConfigItemList);
    expectEmpty(&MachineConfigurationDetail::getRS485ConfigItemList);
    EXPECT_EQ(machine() + package(), "");

    edit(hardware, "<item/>", "");
    const std::string info = "mnt/mtd/code/factory_setting/machineinfo.ini";
    edit(info, "[machine]", "[machine");
    EXPECT_EQ(m_Detail.init(), 0);
    EXPECT_EQ(m_Detail.getAlarmOutConfigItemList()->getHardwareConfigItemList().size(), 4U);
    EXPECT_EQ(machine() + package(), "");

    edit(info, "[machine", "[machine]");
    const std::string standard = ConfigFileNameConst::getSoftwarePackageFileName();
    ConfigFileNameConst::setSoftwarePackageFileName("/moved.ini");
    EXPECT_EQ(m_Detail.init(), 0);
    EXPECT_NE(machine(), "");
    EXPECT_EQ(package(), "");
    m_Root.write("moved.ini", "[package]\nname=moved\n");
    EXPECT_NE(m_Detail.init(), 0);
    EXPECT_EQ(package(), "moved");
    ConfigFileNameConst::setSoftwarePackageFileName(standard);
    EXPECT_EQ(log.take().size(), 3U) << "each failure is reported once";
}

TEST_F(SampleBoard, MonitorAnswersOneOrMinusOne) {
    Monitor monitor;
    MonitorParam param;
    ASSERT_NE(monitor.getMonitorType(3, param), 0);
    EXPECT_EQ(param.getY(), -4);
    param.setBrightness(46);
    EXPECT_EQ(monitor.setMonitorParam(param), 1);
    CapturedLog log;
    param.setBrightness(101);
    EXPECT_EQ(monitor.setMonitorParam(param), -1);
    EXPECT_NE(monitor.getMonitorType(3, param), 0);
    EXPECT_EQ(param.getBrightness(), 46);
    EXPECT_EQ(monitor.getMonitorType(4, param), 0);
}

} // namespace
