#pragma once

#include "nvrhw.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>

/// A change of an input, or a record of the log.
struct PanelMessage {
    enum Kind { ALARM, NORMAL, LOG };

    Kind kind;
    nvrhw::WallTime time;
    std::string text;
};

/// Takes what the library's threads have to tell, and wakes the thread that shows it. Nobody waits
/// for that one: when it does not come (its terminal is stopped), the oldest messages go.
/// Thread-safe.
class PanelMail {
public:
    explicit PanelMail(std::size_t capacity);
    ~PanelMail();
    PanelMail(const PanelMail&) = delete;
    PanelMail& operator=(const PanelMail&) = delete;

    /// That an input is normal in the beginning is no message, and of one that cannot be read the
    /// log tells.
    void addChange(const nvrhw::InputChange& change);
    void addLog(const std::string& text);

    /// Readable while there is mail.
    int file() const { return m_File; }

    /// What has come since the last call.
    std::deque<PanelMessage> take();

private:
    void add(PanelMessage message);

    const std::size_t m_Capacity;
    const int m_File;
    std::mutex m_Mutex;
    std::deque<PanelMessage> m_Messages;
};
