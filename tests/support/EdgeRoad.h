#pragma once

#include "alarm/IHardwareAlarmListener.h"
#include "alarm/IOAlarmInManager.h"
#include "support/ServiceTest.h"
#include "support/SystemCalls.h"

#include <semaphore.h>

/// Counts the messages; the thread that brings one leaves a mark.
class Doorbell : public IHardwareAlarmListener {
public:
    void update(IMessage* /*message*/) override {
        ++m_Rings;
        SystemCalls::mark(); // before the other thread may end the process
        sem_post(&m_Rung);
    }
    void wait() { sem_wait(&m_Rung); }

    int m_Rings = 0;

private:
    sem_t m_Rung{};
};

/// What the detector's thread of a factory asks of the kernel from one message to the next, while
/// this changes a line's level again and again: three times.
inline std::vector<std::string> callsOfEdges(const std::function<void(int level)>& change) {
    return SystemCalls::betweenMarks([&] {
        Factory factory;
        factory.start();
        auto& inputs = factory.get<IOAlarmInManager>("IOAlarmInManager");
        inputs.notifyAlarmConsumers(false); // the first judgement of each
        Doorbell bell;
        inputs.addListener(&bell);
        for (int i = 0; i < 4; ++i) {
            change(i % 2);
            bell.wait();
        }
        _exit(0); // with the factory's end there would be another road
    });
}
