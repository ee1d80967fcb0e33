#pragma once

#include "platform/base/Export.h"

#include <map>
#include <memory>
#include <string>

/// The software installed on this machine. A key that the file does not have is empty.
class NVRHW_API SoftwarePackage {
public:
    /// Component name to its version.
    using Components = std::map<std::string, std::string>;

    /// The package that makes up the recorder's software.
    const std::string& getName() const { return m_Name; }
    void setName(const std::string& value) { m_Name = value; }

    /// As text: versions are not compared here.
    const std::string& getVersion() const { return m_Version; }
    void setVersion(const std::string& value) { m_Version = value; }

    /// As the file gives it; it is not checked to be a date.
    const std::string& getBuildDate() const { return m_BuildDate; }
    void setBuildDate(const std::string& value) { m_BuildDate = value; }

    /// What the package consists of; empty without the section.
    const Components& getComponents() const { return m_Components; }
    void setComponents(const Components& components) { m_Components = components; }

private:
    std::string m_Name;
    std::string m_Version;
    std::string m_BuildDate;
    Components m_Components;
};

/// Reads the package version file, which docs/configuration.md describes.
class NVRHW_API SoftwarePackageParser {
public:
    SoftwarePackageParser();
    ~SoftwarePackageParser();

    /// As SystemInfoParser::parseMachineInfo().
    int parse(const std::string& fileName, SoftwarePackage& package);

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
