#pragma once

#include "alarm/IHardwareAlarmListener.h"
#include "panel/PanelMessage.h"

#include <deque>
#include <map>
#include <mutex>
#include <string>

/// Takes what the library's threads have to tell, and wakes the panel's own thread to fetch it.
/// Nothing waits for the panel: when it does not come (a stopped terminal), the oldest messages
/// go, but never the last state of an input. Thread-safe.
class PanelMailbox : public IHardwareAlarmListener {
public:
    struct Mail {
        std::deque<PanelMessage> messages; ///< the oldest first
        std::map<int, int> flags;          ///< of the inputs that reported: the last one
    };

    PanelMailbox();
    ~PanelMailbox() override;
    PanelMailbox(const PanelMailbox&) = delete;
    PanelMailbox& operator=(const PanelMailbox&) = delete;

    void update(IMessage* message) override;
    void addLog(const std::string& text);

    /// Readable while there is mail.
    int file() const { return m_File; }

    /// What has come since the last call.
    Mail take();

private:
    void add(PanelMessage message);

    const int m_File;
    std::mutex m_Mutex;
    Mail m_Mail;
};
