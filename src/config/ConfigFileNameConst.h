#pragma once

#include "platform/base/Export.h"

#include <string>

/// The paths of the configuration files. An application that keeps its files elsewhere sets them
/// before HardwareServiceFactory::start(), which reads the files; nothing changes them afterwards.
/// Not protected by a lock.
class NVRHW_API ConfigFileNameConst {
public:
    ConfigFileNameConst() = delete;

    /// Default "/hd1/program/config/hardwareConfig.xml": alarm input and output lines.
    static const std::string& getHardwareConfigFileName() { return m_HardwareConfigFileName; }
    static void setHardwareConfigFileName(const std::string& name);

    /// Default "/hd1/program/config/NVRAbility.xml": what the recorder can do.
    static const std::string& getNVRAbilityFileName() { return m_NVRAbilityFileName; }
    static void setNVRAbilityFileName(const std::string& name);

    /// Default "/hd1/program/config/fileSystemAbility.xml": the file systems it supports.
    static const std::string& getFileSystemFileName() { return m_FileSystemFileName; }
    static void setFileSystemFileName(const std::string& name);

    /// Default "/mnt/mtd/code/factory_setting/machineinfo.ini": what the factory wrote.
    static const std::string& getMachineInfoFileName() { return m_MachineInfoFileName; }
    static void setMachineInfoFileName(const std::string& name);

    /// Default "/mnt/mtd/code/program/packageversion.ini": the installed software.
    static const std::string& getSoftwarePackageFileName() { return m_SoftwarePackageFileName; }
    static void setSoftwarePackageFileName(const std::string& name);

private:
    static std::string m_HardwareConfigFileName;
    static std::string m_NVRAbilityFileName;
    static std::string m_FileSystemFileName;
    static std::string m_MachineInfoFileName;
    static std::string m_SoftwarePackageFileName;
};
