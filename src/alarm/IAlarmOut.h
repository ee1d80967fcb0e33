#pragma once

#include "alarm/AlarmOutMode.h"
#include "platform/base/Export.h"

/// One alarm output. Takes no lock: the manager that owns it calls it under its own.
class NVRHW_API IAlarmOut {
public:
    IAlarmOut() = default;
    virtual ~IAlarmOut() noexcept(false);
    IAlarmOut(const IAlarmOut&) = delete;
    IAlarmOut& operator=(const IAlarmOut&) = delete;

    /// Switches the output on, in the way of its mode.
    virtual void triggerAlarm() = 0;

    /// Switches the output off, whatever its mode.
    virtual void cancelAlarm() = 0;

    /// How the next trigger will behave; lives as long as the output.
    const AlarmOutMode& getAlarmOutMode() const { return m_AlarmOutMode; }

    /// Takes effect with the next trigger or cancel.
    void setAlarmOutMode(const AlarmOutMode& mode) { m_AlarmOutMode = mode; }

protected:
    /// Steady, direct and without a time-out until it is replaced.
    AlarmOutMode m_AlarmOutMode;
};
