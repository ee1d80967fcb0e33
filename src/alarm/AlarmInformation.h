#pragma once

#include "platform/Observer.h"
#include "platform/base/Export.h"

#include <string>

/// One alarm event. A listener recovers it from the IMessage it receives by dynamic_cast and copies
/// what it needs: the message lives only for the call.
class NVRHW_API AlarmInformation : public IMessage {
public:
    AlarmInformation() = default;
    ~AlarmInformation() override;

    /// A listener that needs the message beyond the call keeps a copy.
    AlarmInformation(const AlarmInformation&) = default;
    AlarmInformation& operator=(const AlarmInformation&) = default;

    /// The kind of alarm; alarm inputs are 1.
    void setAlarmMajorType(int type) { m_MajorType = type; }
    int getAlarmMajorType() const { return m_MajorType; }

    /// The sub-kind of alarm; alarm inputs are 1.
    void setAlarmMinorType(int type) { m_MinorType = type; }
    int getAlarmMinorType() const { return m_MinorType; }

    /// The source; for an alarm input its id as decimal text.
    void setAlarmSourceId(const std::string& id) { m_SourceId = id; }
    const std::string& getAlarmSourceId() const { return m_SourceId; }

    /// 1: the source has entered its alarm state; 0: it has left it.
    void setAlarmFlag(int flag) { m_Flag = flag; }
    int getAlarmFlag() const { return m_Flag; }

    /// When the change was seen: seconds of the device clock.
    void setAlarmTime(long time) { m_Time = time; }
    long getAlarmTime() const { return m_Time; }

private:
    int m_MajorType = 0;
    int m_MinorType = 0;
    std::string m_SourceId;
    int m_Flag = 0;
    long m_Time = 0;
};
