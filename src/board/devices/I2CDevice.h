#pragma once

#include "board/devices/DeviceFile.h"

#include <string>
#include <vector>

/// A device on an I2C bus, opened for an operation on its registers. What cannot be done throws a
/// std::runtime_error.
class I2CDevice {
public:
    I2CDevice(int bus, int address);

    std::vector<unsigned char> read(int firstRegister, int count) const;
    void write(int firstRegister, const std::vector<unsigned char>& values) const;

private:
    /// A run of registers as the kernel is asked for it.
    struct Run {
        int first;
        std::vector<unsigned char>& values;
        bool isRead;
        std::string what; ///< for an error
    };

    void transfer(const Run& run) const;
    bool transferMessages(const Run& run) const;
    void transferBlocks(const Run& run) const;
    void transferPart(const Run& run, std::size_t begin, std::size_t count, bool asBlock) const;
    bool can(unsigned long functions) const { return (m_Functions & functions) == functions; }

    DeviceFile m_File;
    int m_Address;
    unsigned long m_Functions = 0; ///< what the adapter can do
};
