#pragma once

#include "platform/base/Export.h"

/// One alarm input, and the rule by which its level counts as alarm.
///
/// Takes no lock: the manager that owns it calls it under its own.
class NVRHW_API IAlarmIn {
public:
    IAlarmIn() = default;
    virtual ~IAlarmIn() noexcept(false);
    IAlarmIn(const IAlarmIn&) = delete;
    IAlarmIn& operator=(const IAlarmIn&) = delete;

    /// 0: the input is in alarm while its line is at its configured valid level; 1: while it is
    /// at the other level. The line is read, and its level is what the next check compares with:
    /// for a line configured valid at level 0, the state found now is no change; for one valid at
    /// level 1, the next check reports the state found now as a change, and does not report a
    /// change that has come about until then.
    virtual void setValidLevel(int level) = 0;

    /// Reads the line and judges it: 1 when the alarm state changed, `alarm` then being 1 for
    /// alarm and 0 for normal; 0, with `alarm` untouched, when not or when the read failed.
    virtual int checkAlarmValid(int& alarm) = 0;

    /// The same for a level read elsewhere.
    virtual int checkAlarmValid(int level, int& alarm) = 0;

    /// The level that was last set, 0 before; not the configured one of the line.
    int getValidLevel() const { return m_ValidLevel; }

    /// A virtual input has no hardware line behind it.
    void setVirtualFlag(bool isVirtual) { m_VirtualFlag = isVirtual; }
    bool isVirtual() const { return m_VirtualFlag; }

protected:
    /// What setValidLevel() has set.
    int m_ValidLevel = 0;

    /// True for an input without a line.
    bool m_VirtualFlag = false;
};
