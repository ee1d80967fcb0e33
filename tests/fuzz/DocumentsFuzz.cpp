#include "ability/NVRAbilityConfigure.h"
#include "platform/HardwareConfigure.h"
#include "platform/MachineInfo.h"
#include "platform/MonitorParam.h"
#include "platform/SoftwarePackage.h"
#include "platform/SystemTime.h"

#include <fstream>
#include <unistd.h>

/// Gives every input, as a file in the working folder, to every reader.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = "fuzz-input-" + std::to_string(getpid());
    std::ofstream(path).write(reinterpret_cast<const char*>(data),
                              static_cast<std::streamsize>(size));
    NVRDeviceAbility ability;
    NVRAbilityConfigure abilities;
    abilities.setAbilityConfigFileName(path);
    abilities.parse(ability);

    SafePointer<HardwareConfigItemList> list;
    GPIOSignalConfigure lines;
    lines.setConfigName("GPIOAlarmIn");
    lines.setConfigFileName(path);
    const bool wholeOrNothing = (lines.getConfig(list) == 0) == list.isNull();

    MachineInfo info;
    SoftwarePackage package;
    const bool sameSyntax = SystemInfoParser::parseMachineInfo(path, info) ==
                            SoftwarePackageParser().parse(path, package);

    SystemTime clock;
    clock.m_ConfigFileName = path;
    clock.init();

    MonitorParamConfig store(1, path);
    std::vector<MonitorParam> before;
    std::vector<MonitorParam> after;
    MonitorParam param;
    const int readable = store.getAllMonitorParam(before);
    const bool nothingLost =
        store.setMonitorParam(param) == readable && store.getAllMonitorParam(after) == readable &&
        after.size() >= before.size() && (readable == 0 || store.getMonitorType(0, param) != 0);

    unlink(path.c_str());
    if (!wholeOrNothing || !sameSyntax || !nothingLost) {
        std::abort();
    }
    return 0;
}
