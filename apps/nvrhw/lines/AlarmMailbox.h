#pragma once

#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmInManager.h"
#include "lines/BoardLines.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>

/// Something that happened: an alarm message, or a log record of the library.
struct Event {
    enum Kind { ALARM, NORMAL, LOG };

    Kind kind = LOG;
    std::int64_t time = 0;     ///< seconds since 1970: the message's own
    std::int64_t received = 0; ///< milliseconds since 1970, by the system's clock
    int inputId = 0;           ///< of an alarm message
    std::string text{};        ///< of a log record

    /// Its time as "2026-05-06 21:15:24" and as "21:15:24"; its receipt as "21:15:24.123".
    std::string dateText() const;
    std::string clockText() const;
    std::string receivedText() const;
};

/// Takes what the library's threads have to tell, and wakes the thread that shows it. Nobody waits
/// for that one: when it does not come (its terminal is stopped), the oldest events go and are
/// counted, but never the last state of an input. Thread-safe.
class AlarmMailbox : public IHardwareAlarmListener {
public:
    struct Mail {
        std::deque<Event> events{}; ///< the oldest first
        std::map<int, int> flags{}; ///< of the inputs that reported: the last one
        std::size_t lost = 0;       ///< events that had no room
    };

    explicit AlarmMailbox(std::size_t capacity);
    ~AlarmMailbox() override;
    AlarmMailbox(const AlarmMailbox&) = delete;
    AlarmMailbox& operator=(const AlarmMailbox&) = delete;

    void update(IMessage* message) override;
    void addLog(const std::string& text);

    /// Readable while there is mail.
    int file() const { return m_File; }

    /// What has come since the last call.
    Mail take();

private:
    void add(Event event);

    const std::size_t m_Capacity;
    const int m_File;
    std::mutex m_Mutex;
    Mail m_Mail;
};

/// Listens to the board's alarm inputs for as long as it lives.
class AlarmWatch {
public:
    /// Begins to watch: the mailbox gets the present state of every input, if `withPresent`, and
    /// from then on every change. The library logs what cannot be watched. Keeps the mailbox.
    AlarmWatch(const BoardLines& lines, AlarmMailbox& mailbox, bool withPresent);
    ~AlarmWatch();
    AlarmWatch(const AlarmWatch&) = delete;
    AlarmWatch& operator=(const AlarmWatch&) = delete;

    /// False when changes are not told.
    bool isWatching() const { return m_IsWatching; }

private:
    SafePointer<IOAlarmInManager> m_Inputs;
    IOAlarmInListener m_Listener;
    int m_ListenerId;
    bool m_IsWatching;
};
