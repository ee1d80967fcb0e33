#pragma once

#include "ability/DeviceAbilityCollector.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "platform/DeviceAbility.h"
#include "platform/MachineInfo.h"
#include "platform/SoftwarePackage.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

/// The service "machineConfiguration": what this recorder is and can do. Complete after init() and
/// unchanged from then on; the getters may be called from any thread, and what they refer to lives
/// as long as the service.
class NVRHW_API MachineConfiguration {
public:
    NVRHW_TRACKED

    MachineConfiguration();
    ~MachineConfiguration();
    MachineConfiguration(const MachineConfiguration&) = delete;
    MachineConfiguration& operator=(const MachineConfiguration&) = delete;

    /// Keeps the detail; an empty pointer raises XQRuntimeError.
    void setMachineConfigurationDetail(SafePointer<MachineConfigurationDetail> detail);

    /// Loads the ability documents: non-zero. When one cannot be read it logs "InitError", waits a
    /// second and ends the process with status 0.
    int init();

    /// These two raise XQRuntimeError before setMachineConfigurationDetail().
    const MachineInfo& getMachineInfo() const;
    const SoftwarePackage& getSoftwarePackage() const;

    /// The abilities of the two documents; empty before init().
    const NVRDeviceAbility& getNVRDeviceAbility() const;

    /// The first resolution of the ability document with this id, whatever its input type: 1, or 0
    /// with `out` untouched.
    int getMonitorResolution(int resolutionId, MonitorResolution& out) const;

private:
    SafePointer<MachineConfigurationDetail> m_Detail;
    DeviceAbilityCollector* m_AbilityCollector;
};
