#pragma once

#include "platform/base/Export.h"

#include <string>

/// What the factory wrote about this machine. A key that the file does not have is empty.
class NVRHW_API MachineInfo {
public:
    /// Who made it.
    const std::string& getManufacturer() const { return m_Manufacturer; }
    void setManufacturer(const std::string& value) { m_Manufacturer = value; }

    /// What it is sold as.
    const std::string& getModel() const { return m_Model; }
    void setModel(const std::string& value) { m_Model = value; }

    /// Text, as it may have letters and leading zeros.
    const std::string& getSerialNumber() const { return m_SerialNumber; }
    void setSerialNumber(const std::string& value) { m_SerialNumber = value; }

    /// The revision of the board.
    const std::string& getHardwareVersion() const { return m_HardwareVersion; }
    void setHardwareVersion(const std::string& value) { m_HardwareVersion = value; }

    /// As the factory wrote it; it is not checked to be a date.
    const std::string& getProductionDate() const { return m_ProductionDate; }
    void setProductionDate(const std::string& value) { m_ProductionDate = value; }

private:
    std::string m_Manufacturer;
    std::string m_Model;
    std::string m_SerialNumber;
    std::string m_HardwareVersion;
    std::string m_ProductionDate;
};

/// Reads the machine information file, which docs/configuration.md describes.
class NVRHW_API SystemInfoParser {
public:
    /// Non-zero on success; 0, with the cause in the log and `info` untouched, when the file, a
    /// path of the board, cannot be read or has a bad line.
    static int parseMachineInfo(const std::string& fileName, MachineInfo& info);
};
