#pragma once

#include "platform/Time.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <cstdint>

/// One scheduled operation on one output line: how the line is driven over time, which level comes
/// next and which one is left at the end. It drives nothing itself: the operator's worker asks it
/// at every pass whether the line is due and whether the operation is over.
///
/// Takes no lock; GPIOOperator serialises all access. Times are microseconds of TarvikTime.
class NVRHW_API GPIOOperateRecord {
public:
    NVRHW_TRACKED

    /// How the line is driven over time. A record with any other mode never becomes due.
    enum OperateMode : std::int32_t { HOLD = 1, TOGGLE = 2 };

    /// The line, by its bank.
    void setGroup(int group) { m_Group = group; }
    int getGroup() const { return m_Group; }

    /// The line's bit in the bank.
    void setBitPosition(int bitPosition) { m_BitPosition = bitPosition; }
    int getBitPosition() const { return m_BitPosition; }

    /// One of OperateMode; kept as it is given.
    void setOperateMode(int mode) { m_OperateMode = mode; }
    int getOperateMode() const { return m_OperateMode; }

    /// The level of the next operation.
    void setCurrentLevel(bool level) { m_CurrentLevel = level; }
    bool getCurrentLevel() const { return m_CurrentLevel; }

    /// The level that is left when the record ends.
    void setStopLevel(bool level) { m_StopLevel = level; }
    bool getStopLevel() const { return m_StopLevel; }

    /// Microseconds; the lifetime of the record, for HOLD also the interval until the line is due.
    /// 0: no limit.
    void setTimeOut(int timeOut) { m_TimeOut = timeOut; }
    int getTimeOut() const { return m_TimeOut; }

    /// Level changes per second, for TOGGLE. 0 or less makes the line due at every check.
    void setFrequency(float frequency);
    float getFrequency() const { return m_Frequency; }

    /// Microseconds between two level changes, as derived from the frequency.
    double getEachTimeOut() const { return m_EachTimeOut; }

    /// When the line was last driven; it is due from here on.
    void setLastOperateTime(double time) { m_LastOperateTime = time; }
    double getLastOperateTime() const { return m_LastOperateTime; }

    /// When the lifetime began.
    void setStartOperateTime(double time) { m_StartOperateTime = time; }
    double getStartOperateTime() const { return m_StartOperateTime; }

    /// The line is to be driven to the current level now.
    bool isTimeToOperation() const;

    /// The record's lifetime is over. At exactly the time-out it is not yet.
    bool isTimeToStop() const;

    /// The present time in microseconds, as the two times above are measured.
    static double now();

private:
    std::int32_t m_Group = 0;
    std::int32_t m_BitPosition = 0;
    std::int32_t m_OperateMode = 0;
    bool m_CurrentLevel = false;
    bool m_StopLevel = false;
    double m_LastOperateTime = 0.0;
    double m_StartOperateTime = 0.0;
    std::int32_t m_TimeOut = 0;
    float m_Frequency = 0.0F;
    double m_EachTimeOut = 0.0;
};
