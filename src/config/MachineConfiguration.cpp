#include "config/MachineConfiguration.h"

#include "config/ConfigFileNameConst.h"
#include "platform/Diagnostics.h"
#include "platform/Time.h"

#include <cstdlib>

namespace {

constexpr char SOURCE[] = "MachineConfiguration";

} // namespace

MachineConfiguration::MachineConfiguration()
    : m_AbilityCollector(new (SOURCE, __LINE__) DeviceAbilityCollector) {}

MachineConfiguration::~MachineConfiguration() { delete m_AbilityCollector; }

void MachineConfiguration::setMachineConfigurationDetail(
    SafePointer<MachineConfigurationDetail> detail) { // NOLINT(performance-unnecessary-value-param)
    m_Detail = detail;
}

int MachineConfiguration::init() {
    m_AbilityCollector->setFileSystemFileName(ConfigFileNameConst::getFileSystemFileName());
    m_AbilityCollector->setHardwareConfigFileName(ConfigFileNameConst::getHardwareConfigFileName());
    m_AbilityCollector->setAbilityConfigFileName(ConfigFileNameConst::getNVRAbilityFileName());
    const int result = m_AbilityCollector->init();
    if (result != 0) {
        return result;
    }
    Logger::writeLog("InitError", "init DeviceAbility failed", SOURCE, __LINE__);
    TarvikTime::wait(TarvikTime(1, 0));
    std::exit(0);
}

const MachineInfo& MachineConfiguration::getMachineInfo() const {
    return m_Detail->getMachineInfo();
}

const SoftwarePackage& MachineConfiguration::getSoftwarePackage() const {
    return m_Detail->getSoftwarePackage();
}

const NVRDeviceAbility& MachineConfiguration::getNVRDeviceAbility() const {
    return m_AbilityCollector->getDeviceAbility();
}

int MachineConfiguration::getMonitorResolution(int resolutionId, MonitorResolution& out) const {
    return m_AbilityCollector->getMonitorResolution(resolutionId, out);
}
