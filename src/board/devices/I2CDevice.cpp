#include "board/devices/I2CDevice.h"

#include "board/runtime/HexText.h"

#include <algorithm>
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <stdexcept>

namespace {

constexpr int LOWEST_ADDRESS = 0x03;
constexpr int HIGHEST_ADDRESS = 0x77;
constexpr int REGISTERS = 256;

std::string pathOf(int bus, int address) {
    if (bus < 0) {
        throw std::runtime_error("there is no bus below 0");
    }
    if (address < LOWEST_ADDRESS || address > HIGHEST_ADDRESS) {
        throw std::runtime_error("an address must be from 0x03 to 0x77");
    }
    return "/dev/i2c-" + std::to_string(bus);
}

void checkRun(int firstRegister, std::size_t count) {
    if (firstRegister < 0 || firstRegister >= REGISTERS || count == 0 ||
        count > static_cast<std::size_t>(REGISTERS - firstRegister)) {
        throw std::runtime_error(std::to_string(count) + " registers from " +
                                 std::to_string(firstRegister) + " are not within 0 to 255");
    }
}

std::string runText(const char* verb, int firstRegister, std::size_t count) {
    return std::string(verb) + " " + std::to_string(count) + " from register " +
           hexText(firstRegister);
}

} // namespace

I2CDevice::I2CDevice(int bus, int address)
    : m_File(pathOf(bus, address), O_RDWR), m_Address(address) {
    // Transfers of messages would not ask whether a driver owns the address.
    m_File.control(I2C_SLAVE, static_cast<unsigned long>(address), "taking the address",
                   {{EBUSY, "a driver of the kernel owns it"}});
    m_File.control(I2C_FUNCS, &m_Functions, "asking what the adapter can do");
}

std::vector<unsigned char> I2CDevice::read(int firstRegister, int count) const {
    checkRun(firstRegister, static_cast<std::size_t>(std::max(count, 0)));
    std::vector<unsigned char> values(static_cast<std::size_t>(count));
    transfer({firstRegister, values, true, runText("reading", firstRegister, values.size())});
    return values;
}

void I2CDevice::write(int firstRegister, const std::vector<unsigned char>& values) const {
    checkRun(firstRegister, values.size());
    std::vector<unsigned char> copy = values; // the kernel's records take no constants
    transfer({firstRegister, copy, false, runText("writing", firstRegister, values.size())});
}

void I2CDevice::transfer(const Run& run) const {
    if (!can(I2C_FUNC_I2C) || !transferMessages(run)) {
        transferBlocks(run);
    }
}

// False when the adapter does not take messages of this length.
bool I2CDevice::transferMessages(const Run& run) const {
    std::vector<unsigned char> request{static_cast<unsigned char>(run.first)};
    if (!run.isRead) {
        request.insert(request.end(), run.values.begin(), run.values.end());
    }
    const auto address = static_cast<__u16>(m_Address);
    i2c_msg messages[] = {
        {address, 0, static_cast<__u16>(request.size()), request.data()},
        {address, I2C_M_RD, static_cast<__u16>(run.values.size()), run.values.data()}};
    i2c_rdwr_ioctl_data transfer{messages, run.isRead ? 2U : 1U};
    return m_File.offer(I2C_RDWR, &transfer, run.what);
}

void I2CDevice::transferBlocks(const Run& run) const {
    const bool hasBlocks =
        can(run.isRead ? I2C_FUNC_SMBUS_READ_I2C_BLOCK : I2C_FUNC_SMBUS_WRITE_I2C_BLOCK);
    if (!hasBlocks &&
        !can(run.isRead ? I2C_FUNC_SMBUS_READ_BYTE_DATA : I2C_FUNC_SMBUS_WRITE_BYTE_DATA)) {
        throw std::runtime_error(run.what + ": the adapter can do neither blocks nor bytes");
    }
    const std::size_t step = hasBlocks ? I2C_SMBUS_BLOCK_MAX : 1;
    for (std::size_t begin = 0; begin < run.values.size(); begin += step) {
        transferPart(run, begin, std::min(step, run.values.size() - begin), hasBlocks);
    }
}

void I2CDevice::transferPart(const Run& run, std::size_t begin, std::size_t count,
                             bool asBlock) const {
    const auto part = run.values.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto size = static_cast<unsigned char>(count);
    i2c_smbus_data data{};
    data.block[0] = size; // a byte takes its place
    unsigned char* const payload = asBlock ? data.block + 1 : &data.byte;
    if (!run.isRead) {
        std::copy_n(part, count, payload);
    }
    i2c_smbus_ioctl_data request{};
    request.read_write = run.isRead ? I2C_SMBUS_READ : I2C_SMBUS_WRITE;
    request.command = static_cast<unsigned char>(static_cast<std::size_t>(run.first) + begin);
    request.size = asBlock ? I2C_SMBUS_I2C_BLOCK_DATA : I2C_SMBUS_BYTE_DATA;
    request.data = &data;
    m_File.control(I2C_SMBUS, &request, run.what);
    if (run.isRead) {
        if (asBlock && data.block[0] != size) {
            throw std::runtime_error(run.what + ": " + std::to_string(data.block[0]) +
                                     " came instead of " + std::to_string(count));
        }
        std::copy_n(payload, count, part);
    }
}
