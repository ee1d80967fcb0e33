#include "lines/AlarmQueue.h"

#include <sys/eventfd.h>
#include <unistd.h>

// The counter of the file is the number of messages.
AlarmQueue::AlarmQueue() : m_File(eventfd(0, EFD_CLOEXEC | EFD_SEMAPHORE | EFD_NONBLOCK)) {}

AlarmQueue::~AlarmQueue() { close(m_File); }

void AlarmQueue::update(IMessage* message) {
    const auto* alarm = dynamic_cast<AlarmInformation*>(message);
    if (alarm == nullptr) {
        return; // another kind of message
    }
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Messages.push_back(*alarm);
    eventfd_write(m_File, 1);
}

bool AlarmQueue::isEmpty() const {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Messages.empty();
}

AlarmInformation AlarmQueue::take() {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    eventfd_t one = 0;
    eventfd_read(m_File, &one);
    const AlarmInformation message = m_Messages.front();
    m_Messages.pop_front();
    return message;
}
