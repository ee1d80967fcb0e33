#pragma once

#include "platform/DeviceAbility.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <string>
#include <vector>

/// Loads what the recorder can do, once, and keeps it. Set the paths, call init(), then ask. Not
/// protected by a lock: after init() everything is only read.
class NVRHW_API DeviceAbilityCollector {
public:
    NVRHW_TRACKED

    /// Kept for the application; nothing is read from it here.
    void setHardwareConfigFileName(const std::string& name) { m_HardwareConfigFileName = name; }
    void setAbilityConfigFileName(const std::string& name) { m_AbilityConfigFileName = name; }
    void setFileSystemFileName(const std::string& name) { m_FileSystemFileName = name; }

    /// Loads the ability document, then the file-system ability document: 1, or 0 with what was
    /// read so far when one of them fails.
    int init();

    /// Loads the file-system ability document alone: 1, or 0 with nothing changed.
    int initFileSystemAbility();

    /// What init() has loaded; lives as long as this object.
    const NVRDeviceAbility& getDeviceAbility() const { return m_DeviceAbility; }

    /// Every resolution of the ability document, in its order.
    const std::vector<MonitorResolution>& getMonitorResolutionList() const {
        return m_MonitorResolutionList;
    }

    /// Copies the first resolution with this id, of whatever input type: 1, or 0 with `out`
    /// unchanged when there is none.
    int getMonitorResolution(int resolutionId, MonitorResolution& out) const;

private:
    std::string m_HardwareConfigFileName;
    std::string m_AbilityConfigFileName;
    std::string m_FileSystemFileName;
    NVRDeviceAbility m_DeviceAbility;
    std::vector<MonitorResolution> m_MonitorResolutionList;
};
