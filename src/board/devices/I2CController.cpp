#include "platform/I2CController.h"

#include "board/devices/I2CDevice.h"
#include "board/devices/SysfsAttribute.h"
#include "board/runtime/Guarded.h"
#include "board/runtime/HexText.h"
#include "platform/base/Mutex.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace {

constexpr char SOURCE[] = "I2CController";
constexpr char DEVICES[] = "/dev";
constexpr char PREFIX[] = "i2c-";

std::string subjectOf(int bus, int address) {
    return "I2C bus " + std::to_string(bus) + ", address " + hexText(address);
}

/// The N of "i2c-N"; -1 when the name is another.
int numberOf(const std::string& fileName) {
    const std::size_t digits = sizeof PREFIX - 1;
    int number = -1;
    if (fileName.compare(0, digits, PREFIX) == 0) {
        std::from_chars(fileName.data() + digits, fileName.data() + fileName.size(), number);
    }
    return fileName == PREFIX + std::to_string(number) ? number : -1;
}

std::string adapterName(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) {
        return {};
    }
    // By the device's numbers: on a board it may be a link with a number of its own.
    return SysfsAttribute::read("/sys/dev/char/" + std::to_string(major(status.st_rdev)) + ":" +
                                std::to_string(minor(status.st_rdev)) + "/name");
}

std::vector<I2CBus> findBuses() {
    std::vector<I2CBus> found;
    const std::string folder = GlobalEnv::getInstance()->resolve(DEVICES);
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const int number = numberOf(entry.path().filename().string());
        if (number >= 0) {
            found.push_back({number, adapterName(entry.path().string())});
        }
    }
    if (error) {
        throw std::runtime_error(folder + ": " + error.message());
    }
    std::sort(found.begin(), found.end(),
              [](const I2CBus& a, const I2CBus& b) { return a.number < b.number; });
    return found;
}

} // namespace

struct I2CController::Impl {
    XQMutex transferMutex; // held for an operation on registers
};

I2CController::I2CController() : m_Impl(new Impl) {}

I2CController::~I2CController() = default;

int I2CController::init() { return 1; }

int I2CController::getBuses(std::vector<I2CBus>& buses) {
    return guarded<std::runtime_error>("I2C buses", SOURCE, __LINE__, [&] { buses = findBuses(); });
}

int I2CController::readRegisters(int bus, int address, int firstRegister, int count,
                                 std::vector<unsigned char>& values) {
    const XQMutexManager guard(m_Impl->transferMutex, SOURCE, __LINE__);
    return guarded<std::runtime_error>(subjectOf(bus, address).c_str(), SOURCE, __LINE__, [&] {
        values = I2CDevice(bus, address).read(firstRegister, count);
    });
}

int I2CController::writeRegisters(int bus, int address, int firstRegister,
                                  const std::vector<unsigned char>& values) {
    const XQMutexManager guard(m_Impl->transferMutex, SOURCE, __LINE__);
    return guarded<std::runtime_error>(subjectOf(bus, address).c_str(), SOURCE, __LINE__, [&] {
        I2CDevice(bus, address).write(firstRegister, values);
    });
}
