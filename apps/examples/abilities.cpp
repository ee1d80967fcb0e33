// Prints what the recorder can do: its channels, and what its monitors and network cards offer.
#include <iostream>
#include <nvrhw/nvrhw.h>

int main() try {
    const nvrhw::Board board;
    std::cout << board.machine().getManufacturer() << ' ' << board.machine().getModel() << ", "
              << board.software().getName() << ' ' << board.software().getVersion() << '\n';

    const NVRDeviceAbility& ability = board.abilities(); // lives as long as the board
    std::cout << ability.getMaxChannelNumber() << " channels, " << ability.getDiskNumber()
              << " disks\n";
    for (const MonitorAbility& monitor : ability.getMonitorAbilityList()) {
        std::cout << "monitor " << monitor.getMonitorId() << ':';
        for (const MonitorResolution& resolution : monitor.getMonitorResolutionList()) {
            std::cout << ' ' << resolution.getResolutionName();
        }
        std::cout << '\n';
    }
    for (const auto& card : ability.getNetworkAbility().getNetworkCardAbilityList()) {
        std::cout << "network card " << card.getNetworkCardId() << ':';
        for (const NetWorkingMode& mode : card.getNetWorkingModeList()) {
            std::cout << ' ' << mode.getWorkingName() << ';';
        }
        std::cout << '\n';
    }
} catch (const nvrhw::Error& error) {
    std::cerr << error.what() << '\n'; // every document's errors, with file and line
    return 1;
}
