// Prints the errors of the documents of the board at $NVRHW_ROOT, starts the library on it and uses
// what it has started: every line is read, every output driven to the level it has, every monitor's
// parameters read. Prints "loaded" when all that went well.

#include "config/MachineConfigurationDetail.h"
#include "config/Monitor.h"
#include "gpio/GPIOOperator.h"
#include "platform/Insight.h"
#include "service/HardwareServiceFactory.h"

#include <cstdio>
#include <vector>

namespace {

template <typename T> T& service(const char* name) {
    auto* holder = HardwareServiceFactory::getInstance()->getService(name);
    return *dynamic_cast<SafePointer<T>&>(*holder).operator->();
}

bool useLines(const SafePointer<HardwareConfigItemList>& list, bool areOutputs) {
    auto& lines = service<GPIOOperator>("gpio");
    bool all = true;
    for (const auto& item : list->getHardwareConfigItemList()) {
        const auto line = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        int level = 0;
        all = lines.get(line->getGroup(), line->getBitPosition(), level) != 0 && all;
        all =
            (!areOutputs || lines.set(line->getGroup(), line->getBitPosition(), level) != 0) && all;
    }
    return all;
}

} // namespace

int main() {
    for (const Cause& cause : Insight::findDocumentErrors(false)) {
        std::printf("> %s\n", cause.text().c_str());
    }
    std::fflush(stdout); // start() may end the process
    HardwareServiceFactory::getInstance()->start();
    const auto& detail = service<MachineConfigurationDetail>("machineConfigurationDetail");
    const bool inputs = useLines(detail.getAlarmInConfigItemList(), false);
    const bool outputs = useLines(detail.getAlarmOutConfigItemList(), true);
    std::vector<MonitorParam> params;
    const bool monitors = service<Monitor>("moniter").getAllMonitorParam(params) != 0;
    HardwareServiceFactory::getInstance()->stop();
    std::puts(inputs && outputs && monitors ? "loaded" : "not loaded");
}
