#include "panel/PanelMailbox.h"

#include "alarm/AlarmInformation.h"
#include "panel/PanelModel.h"

#include <cstdlib>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

PanelMailbox::PanelMailbox() : m_File(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

PanelMailbox::~PanelMailbox() { close(m_File); }

void PanelMailbox::update(IMessage* message) {
    const auto* alarm = dynamic_cast<AlarmInformation*>(message);
    if (alarm == nullptr) {
        return; // another kind of message
    }
    const int flag = alarm->getAlarmFlag();
    const int id = std::atoi(alarm->getAlarmSourceId().c_str());
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Mail.flags[id] = flag;
    add({flag != 0 ? PanelMessage::ALARM : PanelMessage::NORMAL, alarm->getAlarmTime(), id, ""});
}

void PanelMailbox::addLog(const std::string& text) {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    add({PanelMessage::LOG, std::time(nullptr), 0, text});
}

PanelMailbox::Mail PanelMailbox::take() {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    eventfd_t count = 0;
    eventfd_read(m_File, &count); // fails when there is no mail
    return std::exchange(m_Mail, Mail());
}

void PanelMailbox::add(PanelMessage message) {
    m_Mail.messages.push_back(std::move(message));
    if (m_Mail.messages.size() > PanelModel::MOST_MESSAGES) {
        m_Mail.messages.pop_front();
    }
    eventfd_write(m_File, 1); // does not fail before 2^64 messages
}
