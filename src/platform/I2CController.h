#pragma once

#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// An I2C bus of the board.
struct NVRHW_API I2CBus {
    int number = 0;   ///< the N of its device /dev/i2c-N
    std::string name; ///< its adapter's, such as "21a4000.i2c"; empty where the kernel tells none
};

/// The board's I2C buses and the registers of the devices on them.
///
/// A device is named by its bus (from 0) and its 7-bit address (0x03 to 0x77), a register by its
/// number (0 to 255). An operation on registers takes 1 to 256 of them, none beyond 255; the device
/// must count on by itself from the first. Operations return 1, or 0 with bus, address and cause in
/// the log. They may be called from several threads at once; one controller makes them one after
/// the other, so that none sees another half done. Each waits for the bus.
class NVRHW_API I_I2CController {
public:
    virtual ~I_I2CController() = default;

    /// Non-zero when the controller is ready.
    virtual int init() = 0;

    /// Replaces `buses` by those there are now, by number; none is an answer too. On 0 `buses` is
    /// as it was.
    virtual int getBuses(std::vector<I2CBus>& buses) = 0;

    /// Replaces `values` by the values of `count` registers; on 0 it is as it was.
    virtual int readRegisters(int bus, int address, int firstRegister, int count,
                              std::vector<unsigned char>& values) = 0;

    /// Writes as many registers as there are values. After a 0 some of them may have been written.
    virtual int writeRegisters(int bus, int address, int firstRegister,
                               const std::vector<unsigned char>& values) = 0;
};

/// Through the kernel's devices /dev/i2c-N below the root directory: a simulated board has no bus,
/// so that nothing reaches the buses of the machine it is played on.
///
/// An adapter that takes messages of that length gets one combined transfer per operation; any
/// other gets SMBus transfers of 32 bytes, or of one where it has no blocks. Where an operation
/// needs several, another process may come between them. A device that a driver of the kernel owns
/// is left alone.
class NVRHW_API I2CController : public I_I2CController {
public:
    NVRHW_TRACKED

    I2CController();
    ~I2CController() override;

    /// Always 1: each operation opens its bus, so that one which appears later is found.
    int init() override;
    int getBuses(std::vector<I2CBus>& buses) override;
    int readRegisters(int bus, int address, int firstRegister, int count,
                      std::vector<unsigned char>& values) override;
    int writeRegisters(int bus, int address, int firstRegister,
                       const std::vector<unsigned char>& values) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
