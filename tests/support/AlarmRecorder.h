#pragma once

#include "alarm/AlarmInformation.h"
#include "alarm/IHardwareAlarmListener.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <utility>

/// Writes down the alarm messages it receives, as "<source id>=<flag> ...".
class AlarmRecorder : public IHardwareAlarmListener {
public:
    void update(IMessage* message) override {
        const auto& alarm = dynamic_cast<AlarmInformation&>(*message);
        {
            const std::lock_guard<std::mutex> guard(m_Mutex);
            m_Last = alarm;
            m_Journal += (m_Journal.empty() ? "" : " ") + alarm.getAlarmSourceId() + "=" +
                         std::to_string(alarm.getAlarmFlag());
            m_Arrived.notify_all();
        }
        if (m_OnMessage) {
            m_OnMessage();
        }
    }

    /// The messages since the last call.
    std::string take() {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return std::exchange(m_Journal, {});
    }

    /// Waits until the messages since the last take() are these; false after ten seconds.
    bool waitFor(const std::string& journal) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        return m_Arrived.wait_for(lock, std::chrono::seconds(10),
                                  [&] { return m_Journal == journal; });
    }

    /// Called after each message, in the notifying thread.
    std::function<void()> m_OnMessage;

    /// The last message, for the notifying thread.
    AlarmInformation m_Last;

private:
    std::mutex m_Mutex;
    std::condition_variable m_Arrived;
    std::string m_Journal;
};
