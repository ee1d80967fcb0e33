#pragma once

#include "alarm/IAlarmIn.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/HardwareConfigure.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

/// An alarm input wired to one GPIO line.
class NVRHW_API GPIOAlarmIn : public IAlarmIn {
public:
    NVRHW_TRACKED

    /// Shares both pointers; an empty one raises XQRuntimeError.
    GPIOAlarmIn(const SafePointer<GPIOOperator>& gpioOperator,
                const SafePointer<GPIOSignalConfigItem>& signal);
    ~GPIOAlarmIn() override;

    /// Reads the line: non-zero on success.
    int getLevel(int& level);

    void setValidLevel(int level) override;
    int checkAlarmValid(int& alarm) override;
    int checkAlarmValid(int level, int& alarm) override;

private:
    SafePointer<GPIOSignalConfigItem> m_Signal;
    SafePointer<GPIOOperator> m_GPIOOperator;
    int m_LastState;
};
