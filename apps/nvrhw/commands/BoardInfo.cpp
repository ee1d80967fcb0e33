#include "commands/BoardInfo.h"

#include "config/ConfigFileNameConst.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/Version.h"
#include "lines/BoardLines.h"
#include "platform/BoardVersion.h"
#include "platform/Diagnostics.h"
#include "print/LogBook.h"

#include <filesystem>
#include <map>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LONGEST_GROUP = 5; // digits

std::string bankKind(const fs::path& entry) {
    const fs::file_status status = fs::status(entry);
    if (fs::is_character_file(status)) {
        return "kernel chip " + fs::canonical(entry).filename().string();
    }
    if (!fs::is_directory(status)) {
        return fs::exists(status) ? "neither a directory of lines nor a GPIO chip" : "broken link";
    }
    const auto count = std::distance(fs::directory_iterator(entry), fs::directory_iterator());
    return "simulated, " + std::to_string(count) + (count == 1 ? " line" : " lines");
}

int sizeOf(const SafePointer<HardwareConfigItemList>& list) {
    return static_cast<int>(list->getHardwareConfigItemList().size());
}

SoftwarePackage readPackage(std::string& problem) {
    MachineConfigurationDetail detail;
    if (detail.initSoftwarePackage() == 0) {
        problem = LogBook::takeCause("cannot be read");
    }
    return detail.getSoftwarePackage();
}

} // namespace

InfoSection BoardInfo::machine() {
    MachineConfigurationDetail detail;
    if (detail.initMachineInfo() == 0) {
        return {"machine", "Machine", {}, LogBook::takeCause("cannot be read")};
    }
    const MachineInfo& info = detail.getMachineInfo();
    return {"machine",
            "Machine",
            {{"manufacturer", "manufacturer", info.getManufacturer()},
             {"model", "model", info.getModel()},
             {"serialNumber", "serial number", info.getSerialNumber()},
             {"hardwareVersion", "hardware version", info.getHardwareVersion()},
             {"productionDate", "production date", info.getProductionDate()}},
            ""};
}

InfoSection BoardInfo::package() {
    std::string problem;
    const SoftwarePackage package = readPackage(problem);
    if (!problem.empty()) {
        return {"package", "Software", {}, problem};
    }
    return {"package",
            "Software",
            {{"name", "package", package.getName()},
             {"version", "version", package.getVersion()},
             {"buildDate", "built", package.getBuildDate()}},
            ""};
}

InfoSection BoardInfo::components() {
    InfoSection section{"components", "Components", {}, ""};
    std::string problem; // told in package()
    const SoftwarePackage package = readPackage(problem);
    for (const auto& [name, version] : package.getComponents()) {
        section.entries.push_back({name, name, version});
    }
    return section;
}

InfoSection BoardInfo::lines() {
    MachineConfigurationDetail detail;
    if (detail.initHardwareConfig() == 0) {
        return {"lines", "Alarm lines", {}, LogBook::takeCause("cannot be read")};
    }
    return {"lines",
            "Alarm lines",
            {{"inputs", "inputs", sizeOf(detail.getAlarmInConfigItemList())},
             {"outputs", "outputs", sizeOf(detail.getAlarmOutConfigItemList())}},
            ""};
}

InfoSection BoardInfo::banks() {
    InfoSection section{"banks", "GPIO banks", {}, ""};
    const std::string device = GlobalEnv::getInstance()->resolve(BoardLines::DEVICE);
    std::map<int, std::string> kinds;
    try {
        for (const auto& entry : fs::directory_iterator(device)) {
            const std::string name = entry.path().filename().string();
            if (name.size() <= LONGEST_GROUP &&
                name.find_first_not_of("0123456789") == std::string::npos) {
                kinds[std::atoi(name.c_str())] = bankKind(entry.path());
            }
        }
    } catch (const fs::filesystem_error& error) {
        section.problem = device + ": " + error.code().message();
    }
    for (const auto& [group, kind] : kinds) {
        section.entries.push_back({std::to_string(group), "bank " + std::to_string(group), kind});
    }
    return section;
}

InfoSection BoardInfo::versions() {
    return {"versions",
            "Versions",
            {{"tool", "nvrhw", NVRHW_VERSION},
             {"library", "library", Version::text()},
             {"boardLayer", "board layer", BoardVersion::text()}},
            ""};
}
