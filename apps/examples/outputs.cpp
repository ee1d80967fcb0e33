// Flashes alarm output 1 for a second, then holds it until it is cancelled.
#include "alarm/IOAlarmOutManager.h"
#include "service/HardwareServiceFactory.h"

#include <chrono>
#include <cstdio>
#include <thread>

int main() {
    using namespace std::chrono_literals;
    constexpr int OUTPUT = 1; // its id in the hardware configuration

    auto* factory = HardwareServiceFactory::getInstance();
    factory->start();
    auto* holder = factory->getService("IOAlarmOutManager");
    SafePointer<IOAlarmOutManager> outputs(dynamic_cast<SafePointer<IOAlarmOutManager>&>(*holder));

    const AlarmOutMode flash(AlarmOutMode::Flash, AlarmOutMode::Direct, 1000, 5.0F);
    if (outputs->setAlarmOutMode(OUTPUT, flash) == 0) {
        std::fprintf(stderr, "this board has no output %d\n", OUTPUT);
        return 1;
    }
    std::puts("flashing for a second, five changes in it");
    outputs->triggerAlarm(OUTPUT);       // returns at once
    std::this_thread::sleep_for(1200ms); // the application has other things to do

    const AlarmOutMode hold(AlarmOutMode::Steady, AlarmOutMode::Direct, 0, 0.0F);
    outputs->setAlarmOutMode(OUTPUT, hold); // a new mode also switches the output off
    std::puts("on, until it is cancelled");
    outputs->triggerAlarm(OUTPUT);
    std::this_thread::sleep_for(500ms);

    std::puts("off");
    outputs->cancelAlarm(OUTPUT); // or it would stay on after the end of the process
    factory->stop();
}
