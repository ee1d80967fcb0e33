#pragma once

#include "foundation/SafePointer.h"
#include "platform/HardwareConfigure.h"
#include "platform/MachineInfo.h"
#include "platform/SoftwarePackage.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>

class MachineConfigurationDetailData;

/// What the board is made of and what is installed on it, read once by init() from the files that
/// ConfigFileNameConst names. Not protected by a lock: after init() everything is only read.
class NVRHW_API MachineConfigurationDetail {
public:
    NVRHW_TRACKED

    MachineConfigurationDetail();
    ~MachineConfigurationDetail();
    MachineConfigurationDetail(const MachineConfigurationDetail&) = delete;
    MachineConfigurationDetail& operator=(const MachineConfigurationDetail&) = delete;

    /// The three steps below, in this order, up to the first that fails: non-zero on success. What
    /// was not read stays empty.
    int init();

    /// Reads the alarm inputs, then the alarm outputs: 1, or 0 when one of them fails.
    int initHardwareConfig();
    int initMachineInfo();
    int initSoftwarePackage();

    /// What was read; empty texts before init() and when a step before it has failed.
    const MachineInfo& getMachineInfo() const;
    const SoftwarePackage& getSoftwarePackage() const;

    /// The list, shared with this object. Asking for one that was not read raises XQRuntimeError;
    /// nothing reads those of the LED, RS-232 and RS-485 lines.
    SafePointer<HardwareConfigItemList> getAlarmInConfigItemList() const;
    SafePointer<HardwareConfigItemList> getAlarmOutConfigItemList() const;
    SafePointer<HardwareConfigItemList> getLEDConfigItemList() const;
    SafePointer<HardwareConfigItemList> getRS232ConfigItemList() const;
    SafePointer<HardwareConfigItemList> getRS485ConfigItemList() const;

private:
    std::unique_ptr<MachineConfigurationDetailData> m_Data;
};
