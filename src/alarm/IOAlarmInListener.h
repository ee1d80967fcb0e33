#pragma once

#include "alarm/IOAlarmInManager.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "platform/GpioDetect.h"
#include "platform/HardwareConfigure.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

/// The service "IOAlarmInListener": has the detector watch the lines of all alarm inputs, and asks
/// the alarm input manager to look at its inputs whenever one of them may have changed.
///
/// For one controlling thread. The detector calls notifyAlarm() in a thread of its own.
class NVRHW_API IOAlarmInListener {
public:
    NVRHW_TRACKED

    IOAlarmInListener();

    /// For a detector of one's own.
    explicit IOAlarmInListener(const SafePointer<IGPIODetect>& detector);

    /// Raises XQRuntimeError when `detail` is empty or its alarm input section was not read.
    void setMachineConfigurationDetail(SafePointer<MachineConfigurationDetail>& detail);

    /// One manager for the whole process: the handler is a plain function without an object.
    void setIOAlarmInManager(SafePointer<IOAlarmInManager>& manager);

    /// Begins to watch: 1, or 0 when the detector cannot be opened or refuses a line (the board
    /// layer logs which and why); no alarm input then reports by itself.
    int start();

    /// Ends watching; returns the detector's result (0 on success) when no handler is running any
    /// more, and therefore must not be called from inside a notification. A later start() begins
    /// anew.
    int stop();

    /// The detector's handler; the argument is not used.
    static void notifyAlarm(int signalNumber);

private:
    int watchAllLines();

    SafePointer<HardwareConfigItemList> m_AlarmInConfigItemList;
    SafePointer<IGPIODetect> m_Detector;

    static SafePointer<IOAlarmInManager> m_IOAlarmInManager;
};
