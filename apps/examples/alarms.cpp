#include "alarm/IOAlarmInManager.h"
#include "service/HardwareServiceFactory.h"

#include <cstdio>

struct Listener : IHardwareAlarmListener {
    void update(IMessage* message) override {
        if (auto* alarm = dynamic_cast<AlarmInformation*>(message)) {
            std::printf("input %s: %s\n", alarm->getAlarmSourceId().c_str(),
                        alarm->getAlarmFlag() != 0 ? "alarm" : "normal");
        }
    }
};

int main() {
    auto* factory = HardwareServiceFactory::getInstance();
    factory->start();
    auto* holder = factory->getService("IOAlarmInManager");
    SafePointer<IOAlarmInManager> inputs(dynamic_cast<SafePointer<IOAlarmInManager>&>(*holder));

    Listener listener;
    const int id = inputs->addListener(&listener);
    inputs->notifyAlarmConsumers(false); // asks once; changes are told from now on
    std::getchar();                      // until Return
    inputs->removeListener(id);
    factory->stop();
}
