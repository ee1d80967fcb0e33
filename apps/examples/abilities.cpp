// Prints what the recorder can do: its channels, and what its monitors and network cards offer.
#include "config/MachineConfiguration.h"
#include "service/HardwareServiceFactory.h"

#include <cstdio>

int main() {
    auto* factory = HardwareServiceFactory::getInstance();
    factory->start(); // ends the process when the ability documents cannot be read
    auto* holder = factory->getService("machineConfiguration");
    SafePointer<MachineConfiguration> machine(
        dynamic_cast<SafePointer<MachineConfiguration>&>(*holder));

    const NVRDeviceAbility& ability = machine->getNVRDeviceAbility(); // lives as long as machine
    std::printf("%d channels, %d disks\n", ability.getMaxChannelNumber(), ability.getDiskNumber());
    for (const MonitorAbility& monitor : ability.getMonitorAbilityList()) {
        std::printf("monitor %d:", monitor.getMonitorId());
        for (const MonitorResolution& resolution : monitor.getMonitorResolutionList()) {
            std::printf(" %s", resolution.getResolutionName());
        }
        std::puts("");
    }
    for (const auto& card : ability.getNetworkAbility().getNetworkCardAbilityList()) {
        std::printf("network card %d:", card.getNetworkCardId());
        for (const NetWorkingMode& mode : card.getNetWorkingModeList()) {
            std::printf(" %s;", mode.getWorkingName());
        }
        std::puts("");
    }
    factory->stop();
}
