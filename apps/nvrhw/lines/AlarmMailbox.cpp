#include "lines/AlarmMailbox.h"

#include "alarm/AlarmInformation.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::int64_t SECOND = 1000; // milliseconds

std::string formatted(std::int64_t seconds, const char* format) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local{};
    localtime_r(&time, &local);
    char text[32];
    std::strftime(text, sizeof text, format, &local);
    return text;
}

std::int64_t now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

std::string Event::dateText() const { return formatted(time, "%Y-%m-%d %H:%M:%S"); }

std::string Event::clockText() const { return formatted(time, "%H:%M:%S"); }

std::string Event::receivedText() const {
    char fraction[8];
    std::snprintf(fraction, sizeof fraction, ".%03d", static_cast<int>(received % SECOND));
    return formatted(received / SECOND, "%H:%M:%S") + fraction;
}

AlarmMailbox::AlarmMailbox(std::size_t capacity)
    : m_Capacity(capacity), m_File(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

AlarmMailbox::~AlarmMailbox() { close(m_File); }

void AlarmMailbox::update(IMessage* message) {
    const auto* alarm = dynamic_cast<AlarmInformation*>(message);
    if (alarm == nullptr) {
        return; // another kind of message
    }
    const int flag = alarm->getAlarmFlag();
    const int id = std::atoi(alarm->getAlarmSourceId().c_str());
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Mail.flags[id] = flag;
    add({flag != 0 ? Event::ALARM : Event::NORMAL, alarm->getAlarmTime(), now(), id, ""});
}

void AlarmMailbox::addLog(const std::string& text) {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const std::int64_t time = now();
    add({Event::LOG, time / SECOND, time, 0, text});
}

AlarmMailbox::Mail AlarmMailbox::take() {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    eventfd_t count = 0;
    eventfd_read(m_File, &count); // fails when there is no mail
    return std::exchange(m_Mail, Mail());
}

void AlarmMailbox::add(Event event) {
    m_Mail.events.push_back(std::move(event));
    if (m_Mail.events.size() > m_Capacity) {
        m_Mail.events.pop_front();
        ++m_Mail.lost;
    }
    eventfd_write(m_File, 1); // does not fail before 2^64 events
}

AlarmWatch::AlarmWatch(const BoardLines& lines, AlarmMailbox& mailbox, bool withPresent)
    : m_Inputs(lines.makeManager<IOAlarmInManager>()),
      m_ListenerId(m_Inputs->addListener(&mailbox)) {
    m_Inputs->notifyAlarmConsumers(false); // the first one tells of every input
    if (!withPresent) {
        static_cast<void>(mailbox.take());
    }
    SafePointer<MachineConfigurationDetail> detail(lines.detail());
    m_Listener.setMachineConfigurationDetail(detail);
    m_Listener.setIOAlarmInManager(m_Inputs);
    m_IsWatching = m_Listener.start() != 0;
    m_Inputs->notifyAlarmConsumers(false); // what has changed before the watch began
}

AlarmWatch::~AlarmWatch() {
    m_Listener.stop();
    m_Inputs->removeListener(m_ListenerId);
}
