#pragma once

#include "alarm/AlarmOutMode.h"
#include "alarm/IAlarmOut.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/HardwareConfigure.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"
#include "platform/base/Mutex.h"

#include <map>

/// The service "IOAlarmOutManager": switches the alarm outputs of the hardware configuration.
///
/// An output's id is the id of its item in the hardware configuration; of several items with one
/// id the first is the output. No line is driven before its first trigger or cancel. Thread-safe
/// once init() has returned; one operation at a time, so that a pulse keeps the others waiting for
/// its 10 ms.
class NVRHW_API IOAlarmOutManager {
public:
    NVRHW_TRACKED

    IOAlarmOutManager() = default;
    IOAlarmOutManager(const IOAlarmOutManager&) = delete;
    IOAlarmOutManager& operator=(const IOAlarmOutManager&) = delete;

    /// What the outputs drive their lines with; to be set before init().
    void setGPIOOperator(const SafePointer<GPIOOperator>& gpioOperator);

    /// Takes the alarm output items of `detail` and keeps it. Raises XQRuntimeError when `detail`
    /// is empty or its alarm output section was not read.
    void setMachineConfigurationDetail(SafePointer<MachineConfigurationDetail>& detail);

    /// Builds the outputs; those that exist already are kept. Returns 1.
    int init() NVRHW_EXCLUDES(m_Mutex);
    void initRealAlarmOut() NVRHW_EXCLUDES(m_Mutex);

    /// Switches the output on, in the way of its mode; an unknown id does nothing.
    void triggerAlarm(int id) NVRHW_EXCLUDES(m_Mutex);

    /// Switches the output off and ends what runs on its line; an unknown id does nothing.
    void cancelAlarm(int id) NVRHW_EXCLUDES(m_Mutex);

    /// The output's mode: 1, or 0 with `mode` untouched for an unknown id.
    int getAlarmOutMode(int id, AlarmOutMode& mode) NVRHW_EXCLUDES(m_Mutex);

    /// Replaces the output's mode and switches the output off: 1, or 0 for an unknown id.
    int setAlarmOutMode(int id, const AlarmOutMode& mode) NVRHW_EXCLUDES(m_Mutex);

private:
    using AlarmOutTable = std::map<int, SafePointer<IAlarmOut>>;

    AlarmOutTable m_AlarmOuts NVRHW_GUARDED_BY(m_Mutex);
    XQMutex m_Mutex; // guards the table and every call into an output
    SafePointer<HardwareConfigItemList> m_AlarmOutConfigItemList;
    SafePointer<MachineConfigurationDetail> m_Detail;
    SafePointer<GPIOOperator> m_GPIOOperator;
};
