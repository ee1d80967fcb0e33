#include "AlarmPrinter.h"

#include "Output.h"
#include "alarm/AlarmInformation.h"

#include <chrono>
#include <ctime>

void AlarmPrinter::update(IMessage* message) {
    const auto* alarm = dynamic_cast<AlarmInformation*>(message);
    if (alarm == nullptr) {
        return; // another kind of message
    }
    const std::time_t time = alarm->getAlarmTime();
    std::tm local{};
    localtime_r(&time, &local);
    char clock[16];
    std::strftime(clock, sizeof clock, "%H:%M:%S", &local);
    say("message: input %-2s %s at %s", alarm->getAlarmSourceId().c_str(),
        alarm->getAlarmFlag() != 0 ? "ALARM " : "normal", clock);

    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_LastFlags[alarm->getAlarmSourceId()] = alarm->getAlarmFlag();
    m_Arrived.notify_all();
}

bool AlarmPrinter::waitFor(int inputId, int flag) {
    std::unique_lock<std::mutex> lock(m_Mutex);
    return m_Arrived.wait_for(lock, std::chrono::seconds(2), [&] {
        const auto found = m_LastFlags.find(std::to_string(inputId));
        return found != m_LastFlags.end() && found->second == flag;
    });
}
