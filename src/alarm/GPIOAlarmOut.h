#pragma once

#include "alarm/IAlarmOut.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/HardwareConfigure.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

/// An alarm output wired to one GPIO line. Making or destroying it drives nothing.
class NVRHW_API GPIOAlarmOut : public IAlarmOut {
public:
    NVRHW_TRACKED

    /// Shares both pointers; an empty one raises XQRuntimeError.
    GPIOAlarmOut(const SafePointer<GPIOOperator>& gpioOperator,
                 const SafePointer<GPIOSignalConfigItem>& signal);
    ~GPIOAlarmOut() override;

    /// Does nothing for a mode that AlarmOutMode::Mode does not name. Flash begins with level 1
    /// whatever the active level is. Pulse blocks the caller for 10 ms.
    void triggerAlarm() override;
    void cancelAlarm() override;

private:
    SafePointer<GPIOOperator> m_GPIOOperator;
    SafePointer<GPIOSignalConfigItem> m_Signal;
};
