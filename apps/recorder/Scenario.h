#pragma once

#include "AlarmPrinter.h"
#include "alarm/IOAlarmOutManager.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "platform/HardwareConfigure.h"

/// A few seconds in the life of a recorder on a simulated board: contacts open and close, outputs
/// are switched in every way, and each effect is checked at the line.
class Scenario {
public:
    Scenario(const SafePointer<MachineConfigurationDetail>& detail,
             const SafePointer<GPIOOperator>& gpio, const SafePointer<IOAlarmOutManager>& outputs,
             AlarmPrinter& alarms);

    /// The exit status: 0 when everything happened as it should.
    int play();

private:
    void moveInput(int id, bool toAlarm);
    void trigger(int id, const AlarmOutMode& mode, const char* what);
    void expectAtRest(int id);
    void fail(const char* what, int id);

    SafePointer<HardwareConfigItemList> m_Inputs;
    SafePointer<HardwareConfigItemList> m_Outputs;
    SafePointer<GPIOOperator> m_GPIO;
    SafePointer<IOAlarmOutManager> m_OutManager;
    AlarmPrinter& m_Alarms;
    int m_Status = 0;
};
