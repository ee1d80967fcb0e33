#include "config/ConfigFileNameConst.h"

std::string ConfigFileNameConst::m_HardwareConfigFileName =
    "/hd1/program/config/hardwareConfig.xml";
std::string ConfigFileNameConst::m_NVRAbilityFileName = "/hd1/program/config/NVRAbility.xml";
std::string ConfigFileNameConst::m_FileSystemFileName = "/hd1/program/config/fileSystemAbility.xml";
std::string ConfigFileNameConst::m_MachineInfoFileName =
    "/mnt/mtd/code/factory_setting/machineinfo.ini";
std::string ConfigFileNameConst::m_SoftwarePackageFileName =
    "/mnt/mtd/code/program/packageversion.ini";

void ConfigFileNameConst::setHardwareConfigFileName(const std::string& name) {
    m_HardwareConfigFileName = name;
}

void ConfigFileNameConst::setNVRAbilityFileName(const std::string& name) {
    m_NVRAbilityFileName = name;
}

void ConfigFileNameConst::setFileSystemFileName(const std::string& name) {
    m_FileSystemFileName = name;
}

void ConfigFileNameConst::setMachineInfoFileName(const std::string& name) {
    m_MachineInfoFileName = name;
}

void ConfigFileNameConst::setSoftwarePackageFileName(const std::string& name) {
    m_SoftwarePackageFileName = name;
}
