#include "panel/PanelMail.h"

#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

PanelMail::PanelMail(std::size_t capacity)
    : m_Capacity(capacity), m_File(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

PanelMail::~PanelMail() { close(m_File); }

void PanelMail::addChange(const nvrhw::InputChange& change) {
    const bool isAlarm = change.state == nvrhw::Input::Alarm;
    if (isAlarm || (change.state == nvrhw::Input::Normal && !change.isPresent)) {
        add({isAlarm ? PanelMessage::ALARM : PanelMessage::NORMAL, change.time.wall,
             "input " + std::to_string(change.input.id) + "  " + std::string(change.input.name)});
    }
}

void PanelMail::addLog(const std::string& text) {
    add({PanelMessage::LOG, nvrhw::Moment::now().wall, text});
}

std::deque<PanelMessage> PanelMail::take() {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    eventfd_t count = 0;
    eventfd_read(m_File, &count); // fails when there is no mail
    return std::exchange(m_Messages, {});
}

void PanelMail::add(PanelMessage message) {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Messages.push_back(std::move(message));
    if (m_Messages.size() > m_Capacity) {
        m_Messages.pop_front();
    }
    eventfd_write(m_File, 1); // does not fail before 2^64 messages
}
