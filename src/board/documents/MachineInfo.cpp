#include "platform/MachineInfo.h"

#include "board/documents/ConfigError.h"
#include "board/documents/IniFile.h"
#include "board/documents/schema/MachineSchema.h"

namespace {

using Schema = MachineSchema;

constexpr char SOURCE[] = "SystemInfoParser";
constexpr char SUBJECT[] = "MachineInfo";

} // namespace

int SystemInfoParser::parseMachineInfo(const std::string& fileName, MachineInfo& info) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const IniFile file(GlobalEnv::getInstance()->resolve(fileName));
        const auto value = [&](const FieldSchema& key) {
            return file.value(Schema::MACHINE.name, key.name);
        };
        MachineInfo read;
        read.setManufacturer(value(Schema::MANUFACTURER));
        read.setModel(value(Schema::MODEL));
        read.setSerialNumber(value(Schema::SERIAL_NUMBER));
        read.setHardwareVersion(value(Schema::HARDWARE_VERSION));
        read.setProductionDate(value(Schema::PRODUCTION_DATE));
        info = read;
    });
}
