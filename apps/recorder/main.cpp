// A small recorder application: how one uses the library.
//
//     recorder BOARD                  plays a short scenario on the simulated board and ends
//     recorder --interactive BOARD    runs until Ctrl-C; change line files from another terminal
//
// BOARD is the root directory below which the board's files are looked up; "/" on a real board.

#include "AlarmPrinter.h"
#include "LevelTrace.h"
#include "Output.h"
#include "Scenario.h"
#include "alarm/IOAlarmInManager.h"
#include "alarm/IOAlarmOutManager.h"
#include "config/MachineConfiguration.h"
#include "config/MachineConfigurationDetail.h"
#include "gpio/GPIOOperator.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>

namespace {

/// A copy of the pointer registered under this name: it keeps the service alive.
template <typename T> SafePointer<T> service(const std::string& name) {
    auto* holder =
        dynamic_cast<SafePointer<T>*>(HardwareServiceFactory::getInstance()->getService(name));
    if (holder == nullptr) {
        throw std::runtime_error("no service " + name);
    }
    return *holder;
}

void printMachine(const MachineConfiguration& configuration) {
    const MachineInfo& machine = configuration.getMachineInfo();
    std::printf("machine   %s %s, serial number %s, hardware %s\n",
                machine.getManufacturer().c_str(), machine.getModel().c_str(),
                machine.getSerialNumber().c_str(), machine.getHardwareVersion().c_str());

    const SoftwarePackage& software = configuration.getSoftwarePackage();
    std::printf("software  %s %s of %s\n", software.getName().c_str(),
                software.getVersion().c_str(), software.getBuildDate().c_str());
    for (const auto& component : software.getComponents()) {
        std::printf("          %s %s\n", component.first.c_str(), component.second.c_str());
    }
}

void printAbilities(const NVRDeviceAbility& ability) {
    std::printf("abilities %d channels, %d of them played back at once, %d disks\n",
                ability.getMaxChannelNumber(), ability.getMaxPlaybackChannelNumber(),
                ability.getDiskNumber());
    std::printf("          %d alarm inputs, %d alarm outputs, %zu monitors, %zu layouts,"
                " %zu network cards\n",
                ability.getAlarmInDeviceNumber(), ability.getAlarmOutputDeviceNumber(),
                ability.getMonitorAbilityList().size(),
                ability.getLayoutAbility().getLayoutModelList().size(),
                ability.getNetworkAbility().getNetworkCardAbilityList().size());
}

/// Ctrl-C and kill are taken by sigwait(), not by a handler that interrupts some thread. To be
/// called before any thread is started, so that all of them inherit it.
sigset_t blockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

/// A listener is known to the manager only as long as it lives, whatever ends its life.
class Registration {
public:
    Registration(const SafePointer<IOAlarmInManager>& manager, IHardwareAlarmListener& listener)
        : m_Manager(manager), m_Id(m_Manager->addListener(&listener)) {}
    ~Registration() { m_Manager->removeListener(m_Id); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    SafePointer<IOAlarmInManager> m_Manager;
    int m_Id;
};

int run(const std::string& board, bool interactive) {
    sigset_t endSignals{};
    if (interactive) {
        endSignals = blockEndSignals();
    }
    GlobalEnv::getInstance()->setRootDirectory(board);
    HardwareServiceFactory* factory = HardwareServiceFactory::getInstance();
    factory->start();

    const auto configuration = service<MachineConfiguration>("machineConfiguration");
    const auto detail = service<MachineConfigurationDetail>("machineConfigurationDetail");
    const auto gpio = service<GPIOOperator>("gpio");
    const auto alarmIns = service<IOAlarmInManager>("IOAlarmInManager");
    const auto alarmOuts = service<IOAlarmOutManager>("IOAlarmOutManager");

    printMachine(*configuration.operator->());
    printAbilities(configuration->getNVRDeviceAbility());
    std::fflush(stdout);

    AlarmPrinter printer;
    const Registration registration(alarmIns, printer);
    alarmIns->notifyAlarmConsumers(false); // the present state of every input
    int status = 0;
    {
        const LevelTrace trace(gpio, detail->getAlarmOutConfigItemList());
        if (interactive) {
            say("running; Ctrl-C ends it");
            int received = 0;
            sigwait(&endSignals, &received);
        } else {
            status = Scenario(detail, gpio, alarmOuts, printer).play();
        }
    }
    factory->stop();
    say("end, status %d", status);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    const bool interactive = argc > 1 && std::strcmp(argv[1], "--interactive") == 0;
    if (argc != (interactive ? 3 : 2) || argv[argc - 1][0] == '-') {
        std::fprintf(stderr, "usage: recorder [--interactive] BOARD\n");
        return 2;
    }
    try {
        return run(argv[argc - 1], interactive);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "recorder: %s\n", error.what());
        return 1;
    }
}
