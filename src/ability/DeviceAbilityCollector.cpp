#include "ability/DeviceAbilityCollector.h"

#include "ability/NVRAbilityConfigure.h"

int DeviceAbilityCollector::init() {
    NVRAbilityConfigure document;
    document.setAbilityConfigFileName(m_AbilityConfigFileName);
    if (document.parse(m_DeviceAbility) == 0) {
        return 0;
    }
    m_MonitorResolutionList = document.getMonitorResolutionList();
    return initFileSystemAbility() != 0 ? 1 : 0;
}

int DeviceAbilityCollector::initFileSystemAbility() {
    std::vector<FileSystemAbility> abilities;
    if (FileSystemAbilityConfig::parseFileSystemAbilityConfig(m_FileSystemFileName, abilities) ==
        0) {
        return 0;
    }
    m_DeviceAbility.setFileSystemAbilityList(abilities);
    return 1;
}

int DeviceAbilityCollector::getMonitorResolution(int resolutionId, MonitorResolution& out) const {
    for (const MonitorResolution& resolution : m_MonitorResolutionList) {
        if (resolution.getResolutionId() == resolutionId) {
            out = resolution;
            return 1;
        }
    }
    return 0;
}
