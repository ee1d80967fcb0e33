#include "platform/I2CController.h"
#include "platform/NetController.h"
#include "platform/SystemTime.h"
#include "support/LogCapture.h"

#include <fcntl.h>
#include <fstream>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <numeric>
#include <sys/ioctl.h>

namespace {

void shell(const std::string& command) { ASSERT_EQ(std::system(command.c_str()), 0) << command; }

std::string firstWord(const std::string& file) {
    std::string word;
    std::ifstream(file) >> word;
    return word;
}

/// A register as the kernel shows it to a program of its own.
int registerOf(const I2CBus& bus, unsigned long address, int number) {
    const int file = open(("/dev/i2c-" + std::to_string(bus.number)).c_str(), O_RDWR);
    i2c_smbus_data data{};
    i2c_smbus_ioctl_data request{I2C_SMBUS_READ, static_cast<__u8>(number), I2C_SMBUS_BYTE_DATA,
                                 &data};
    EXPECT_TRUE(ioctl(file, I2C_SLAVE, address) == 0 && ioctl(file, I2C_SMBUS, &request) == 0);
    close(file);
    return data.byte;
}

TEST(ControllersTest, MoveTheRegistersOfAnI2CChip) {
    I2CController controller;
    for (const char* functions : {"", "functionality=0x180000"}) { // blocks too, and bytes alone
        shell(std::string("insmod /usr/lib/modules/i2c-stub.ko chip_addr=0x50,0x51 ") + functions);
        std::vector<I2CBus> buses;
        ASSERT_EQ(controller.getBuses(buses), 1);
        ASSERT_EQ(buses.size(), 1U);
        EXPECT_EQ(buses[0].name, "SMBus stub driver");
        const int bus = buses[0].number;

        LogCapture log;
        std::vector<unsigned char> read;
        std::vector<unsigned char> written(70);
        std::iota(written.begin(), written.end(), 1);
        EXPECT_EQ(controller.writeRegisters(bus, 0x50, 186, written), 1);
        for (const int number : {185, 186, 217, 218, 249, 250, 255}) {
            EXPECT_EQ(registerOf(buses[0], 0x50, number), number - 185) << number;
        }
        EXPECT_EQ(controller.readRegisters(bus, 0x50, 186, 70, read), 1);
        EXPECT_EQ(read, written);
        shell("echo dummy 0x51 >/sys/bus/i2c/devices/i2c-" + std::to_string(bus) + "/new_device");
        EXPECT_EQ(controller.readRegisters(bus, 0x51, 0, 1, read), 0);
        log.expectOne({", address 0x51: ", "resource busy (a driver of the kernel owns it) ("});
        shell("rmmod i2c-stub");
    }
}

TEST(ControllersTest, SetTheClocks) {
    LogCapture log;
    SystemTime clock;
    DateTime before;
    clock.m_ConfigFileName = "/none";
    EXPECT_EQ(clock.init(), 1);
    log.expectOne({"/none: no such file: /dev/rtc0 in UTC is taken"});
    EXPECT_EQ(clock.getHardwareTime(before), 1);
    EXPECT_EQ(clock.setHardwareTime({2036, 2, 29, 12, 0, 0}), 1);
    EXPECT_EQ(firstWord("/sys/class/rtc/rtc0/date"), "2036-02-29");
    EXPECT_EQ(clock.setSystemFromHardware(), 1);
    EXPECT_NEAR(static_cast<double>(std::time(nullptr)), 2087899200.0, 60.0);
    EXPECT_EQ(clock.setHardwareTime(before), 1);
    EXPECT_EQ(clock.setHardwareFromSystem(), 1);
    EXPECT_NEAR(std::stod(firstWord("/sys/class/rtc/rtc0/since_epoch")), 2087899200.0, 60.0);
    EXPECT_EQ(clock.setHardwareTime(before) + clock.setSystemFromHardware(), 2);
    EXPECT_EQ(clock.setHardwareTime({2200, 1, 1, 0, 0, 0}), 0);
    log.expectOne({"Numerical result out of range (beyond what the clock can hold)"});

    const auto readOften = [&] { // the kernel lets one at a time open the clock
        for (int i = 0; i < 200; ++i) {
            DateTime read;
            clock.getHardwareTime(read);
        }
    };
    std::thread other(readOften);
    readOften();
    other.join();
    EXPECT_EQ(log.take(), "");
    const int file = open("/dev/rtc0", O_RDONLY);
    EXPECT_EQ(clock.getHardwareTime(before), 0);
    log.expectOne({"/dev/rtc0: Device or resource busy (another process has it open)"});
    close(file);
}

TEST(ControllersTest, ListTheNetwork) {
    NetController net;
    NetInterface card;
    shell("ip link set eth0 up && ip address add 192.0.2.7/24 dev eth0");
    ASSERT_EQ(net.getInterface("eth0", card), 1);
    EXPECT_EQ(card.mac, firstWord("/sys/class/net/eth0/address"));
    EXPECT_TRUE(card.isUp && card.mtu == 1500);
    ASSERT_EQ(card.ipv4.size(), 1U);
    EXPECT_TRUE(card.ipv4[0].address == "192.0.2.7" && card.ipv4[0].prefixLength == 24);
    shell("ip address flush dev eth0 && ip link set eth0 down");
}

} // namespace
