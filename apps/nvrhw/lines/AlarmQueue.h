#pragma once

#include "alarm/AlarmInformation.h"
#include "alarm/IHardwareAlarmListener.h"

#include <deque>
#include <mutex>

/// Takes alarm messages in the library's threads and hands them to the one that prints: however
/// slow the reader of the program is, the library is not kept waiting. Thread-safe.
class AlarmQueue : public IHardwareAlarmListener {
public:
    AlarmQueue();
    ~AlarmQueue() override;
    AlarmQueue(const AlarmQueue&) = delete;
    AlarmQueue& operator=(const AlarmQueue&) = delete;

    void update(IMessage* message) override;

    /// Readable while there are messages.
    int file() const { return m_File; }

    bool isEmpty() const;

    /// Takes the oldest message; there must be one.
    AlarmInformation take();

private:
    mutable std::mutex m_Mutex;
    std::deque<AlarmInformation> m_Messages;
    int m_File;
};
