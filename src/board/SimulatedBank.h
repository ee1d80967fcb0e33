#pragma once

#include "board/GPIOBank.h"

#include <string>

/// A bank made of files: a directory with one file per line, named by the bit, that holds the
/// level as "0" or "1", white space behind it allowed. Any process may read and write the files.
class SimulatedBank : public GPIOBank {
public:
    SimulatedBank(const std::string& device, int group);

    void read(const std::vector<GPIOReading*>& readings) override;
    bool drive(int bit, int level, std::string& cause) override;
    std::unique_ptr<GPIOBankWatch> watch(std::string& cause) override;

private:
    std::string lineFile(int bit) const;

    const std::string m_Device;
    const std::string m_Entry; // of the bank in the device's directory
};
