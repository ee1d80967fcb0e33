#pragma once

#include "alarm/IHardwareAlarmListener.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>

/// Prints every alarm message and remembers the last flag of each input.
class AlarmPrinter : public IHardwareAlarmListener {
public:
    void update(IMessage* message) override;

    /// Waits until the last message of this input had this flag; false after two seconds.
    bool waitFor(int inputId, int flag);

private:
    std::mutex m_Mutex;
    std::condition_variable m_Arrived;
    std::map<std::string, int> m_LastFlags;
};
