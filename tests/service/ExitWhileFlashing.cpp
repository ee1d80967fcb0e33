// Starts everything, sets an output flashing and simply returns from main, with the detector and
// the worker running: the process must end by itself, without a crash or a report.

#include "alarm/IOAlarmOutManager.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <cstdlib>
#include <filesystem>

int main() {
    std::string root = (std::filesystem::temp_directory_path() / "nvrhw-XXXXXX").string();
    if (mkdtemp(root.data()) == nullptr) {
        return 1;
    }
    std::filesystem::copy(NVRHW_SAMPLE_BOARD, root, std::filesystem::copy_options::recursive);
    GlobalEnv::getInstance()->setRootDirectory(root);

    HardwareServiceFactory* factory = HardwareServiceFactory::getInstance();
    factory->start();
    auto& outputs = *dynamic_cast<SafePointer<IOAlarmOutManager>*>( // must be there
        factory->getService("IOAlarmOutManager"));
    outputs->setAlarmOutMode(1, {AlarmOutMode::Flash, AlarmOutMode::Direct, 0, 20.0F});
    outputs->triggerAlarm(1);
    std::filesystem::remove_all(root);
    return 0;
}
