#include "platform/MachineInfo.h"

#include "board/documents/ConfigError.h"
#include "board/documents/IniFile.h"

namespace {

constexpr char SOURCE[] = "SystemInfoParser";
constexpr char SUBJECT[] = "MachineInfo";

constexpr char MACHINE[] = "machine";
constexpr char MANUFACTURER[] = "manufacturer";
constexpr char MODEL[] = "model";
constexpr char SERIAL_NUMBER[] = "serialNumber";
constexpr char HARDWARE_VERSION[] = "hardwareVersion";
constexpr char PRODUCTION_DATE[] = "productionDate";

} // namespace

int SystemInfoParser::parseMachineInfo(const std::string& fileName, MachineInfo& info) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const IniFile file(GlobalEnv::getInstance()->resolve(fileName));
        MachineInfo read;
        read.setManufacturer(file.value(MACHINE, MANUFACTURER));
        read.setModel(file.value(MACHINE, MODEL));
        read.setSerialNumber(file.value(MACHINE, SERIAL_NUMBER));
        read.setHardwareVersion(file.value(MACHINE, HARDWARE_VERSION));
        read.setProductionDate(file.value(MACHINE, PRODUCTION_DATE));
        info = read;
    });
}
