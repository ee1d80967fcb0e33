#include "platform/I2CController.h"
#include "platform/SystemTime.h"
#include "support/DocumentTest.h"

#include <array>
#include <cstdarg>
#include <cstring>
#include <functional>
#include <future>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <linux/rtc.h>
#include <numeric>
#include <sys/ioctl.h>

namespace {

using Bytes = std::vector<unsigned char>;

/// In place of the kernel: each I2C bus has a device at 0x50, and a driver owns 0x51; the hardware
/// clock holds the years from 2000 to 2099.
struct Kernel {
    unsigned long functions = I2C_FUNC_I2C;
    unsigned long chosen = 0;
    int cut = 0;       // missing from each block
    int longest = 257; // message that an adapter takes
    std::array<unsigned char, 256> registers{};
    std::string trace;                   // of messages, blocks and bytes, read and written
    std::function<void()> afterTransfer; // once
    rtc_time hardwareClock{};
    time_t systemClock = 0;
    int clockError = 0;

    template <typename Value> static int move(bool isRead, Value& theirs, Value& ours) {
        (isRead ? theirs : ours) = (isRead ? ours : theirs);
        return 0;
    }

    int move(const char* kind, std::size_t first, unsigned char* bytes, int count) {
        trace += kind + std::to_string(count) + " ";
        for (int i = 0; i < count; ++i) {
            move(kind[1] == 'r', bytes[i], registers.at(first++));
        }
        if (const auto action = std::exchange(afterTransfer, nullptr)) {
            action();
        }
        return 0;
    }

    int transfer(const i2c_rdwr_ioctl_data& list) {
        const i2c_msg& last = list.msgs[list.nmsgs - 1];
        const std::size_t first = list.msgs[0].buf[0];
        return last.addr != 0x50              ? ENXIO
               : last.len > longest           ? EOPNOTSUPP
               : (last.flags & I2C_M_RD) != 0 ? move("mr", first, last.buf, last.len)
                                              : move("mw", first, last.buf + 1, last.len - 1);
    }

    int transfer(const i2c_smbus_ioctl_data& list) {
        const bool isRead = list.read_write == I2C_SMBUS_READ;
        unsigned char* const bytes = list.data->block;
        if (chosen == 0x50 && list.size == I2C_SMBUS_BYTE_DATA) {
            return move(isRead ? "br" : "bw", list.command, bytes, 1);
        }
        const bool isGood = chosen == 0x50 && bytes[0] <= I2C_SMBUS_BLOCK_MAX;
        bytes[0] = static_cast<unsigned char>(bytes[0] - cut);
        return isGood ? move(isRead ? "kr" : "kw", list.command, bytes + 1, bytes[0]) : ENXIO;
    }

    int keep(rtc_time& time, bool isRead) {
        const bool fits = isRead || (time.tm_year >= 100 && time.tm_year < 200);
        return clockError + (fits ? move(isRead, time, hardwareClock) : ERANGE);
    }

    int answer(unsigned long request, void* argument) {
        switch (request) {
        case I2C_SLAVE:
            chosen = reinterpret_cast<unsigned long>(argument);
            return chosen == 0x51 ? EBUSY : 0;
        case I2C_FUNCS:
            return move(true, *static_cast<unsigned long*>(argument), functions);
        case I2C_SMBUS:
            return transfer(*static_cast<i2c_smbus_ioctl_data*>(argument));
        case I2C_RDWR:
            return transfer(*static_cast<i2c_rdwr_ioctl_data*>(argument));
        default:
            return keep(*static_cast<rtc_time*>(argument), request == RTC_RD_TIME);
        }
    }
} kernel;

class Controllers : public DocumentTest {
protected:
    Controllers() {
        kernel = Kernel();
        for (const char* name : {"i2c-10", "i2c-2", "i2c-1", "i2c-x", "i2c-01", "i2c--1", "rtc0"}) {
            write("/dev/" + std::string(name), "");
        }
        m_Clock.m_ConfigFileName = "/rtc.xml";
    }
    ~Controllers() noexcept override = default;

    void configure(const std::string& attributes) {
        write("/rtc.xml", "<C><Device " + attributes + "/></C>");
        EXPECT_EQ(m_Clock.init(), 1);
    }

    /// Sets and gets this moment, for which the clock must stand at the month, day and hour.
    void expectKept(const DateTime& moment, int month, int day, int hour) {
        DateTime read;
        EXPECT_EQ(m_Clock.setHardwareTime(moment), 1);
        const rtc_time& held = kernel.hardwareClock;
        EXPECT_TRUE(held.tm_mon == month - 1 && held.tm_mday == day && held.tm_hour == hour);
        EXPECT_EQ(m_Clock.getHardwareTime(read), 1);
        EXPECT_EQ(std::memcmp(&read, &moment, sizeof read), 0);
    }

    I2CController m_I2C;
    Bytes m_Read;
    SystemTime m_Clock;
};

TEST_F(Controllers, ListBusesByNumber) {
    std::vector<I2CBus> buses(1);
    ASSERT_EQ(m_I2C.getBuses(buses), 1);
    ASSERT_EQ(buses.size(), 3U);
    EXPECT_TRUE(buses[0].number == 1 && buses[1].number == 2 && buses[2].number == 10);
}

TEST_F(Controllers, TransferAsTheAdapterCan) {
    const std::tuple<unsigned long, int, const char*> adapters[] = {
        {I2C_FUNC_I2C | I2C_FUNC_SMBUS_I2C_BLOCK, 256, "mw256 mr256 "},
        {I2C_FUNC_SMBUS_I2C_BLOCK | I2C_FUNC_SMBUS_BYTE_DATA, 70, "kw32 kw32 kw6 kr32 kr32 kr6 "},
        {I2C_FUNC_SMBUS_BYTE_DATA, 3, "bw1 bw1 bw1 br1 br1 br1 "},
        {I2C_FUNC_SMBUS_WRITE_I2C_BLOCK | I2C_FUNC_SMBUS_READ_BYTE_DATA, 2, "kw2 br1 br1 "},
    };
    for (const auto& [functions, count, trace] : adapters) {
        kernel = Kernel();
        kernel.functions = functions;
        Bytes written(static_cast<std::size_t>(count));
        std::iota(written.begin(), written.end(), 7);
        EXPECT_EQ(m_I2C.writeRegisters(1, 0x50, 256 - count, written), 1);
        EXPECT_EQ(Bytes(kernel.registers.end() - count, kernel.registers.end()), written);
        EXPECT_EQ(m_I2C.readRegisters(1, 0x50, 256 - count, count, m_Read), 1);
        EXPECT_EQ(m_Read, written);
        EXPECT_EQ(kernel.trace, trace);
    }
    kernel = Kernel();
    kernel.functions = I2C_FUNC_I2C | I2C_FUNC_SMBUS_I2C_BLOCK;
    kernel.longest = 34;
    EXPECT_EQ(m_I2C.readRegisters(1, 0x50, 0, 34, m_Read), 1);
    EXPECT_EQ(m_I2C.readRegisters(1, 0x50, 0, 35, m_Read), 1);
    EXPECT_EQ(kernel.trace, "mr34 kr32 kr3 ") << "messages are too long for some adapters";
}

TEST_F(Controllers, SayOnceWhatCannotBeDone) {
    const std::tuple<int, int, int, int, unsigned long, std::string> cases[] = {
        {-1, 0x50, 0, 1, I2C_FUNC_I2C, "there is no bus below 0"},
        {1, 0x02, 0, 1, I2C_FUNC_I2C, "an address must be from 0x03 to 0x77"},
        {1, 0x78, 0, 1, I2C_FUNC_I2C, "an address must be from 0x03 to 0x77"},
        {1, 0x50, -1, 1, I2C_FUNC_I2C, "1 registers from -1 are not within 0 to 255"},
        {1, 0x50, 250, 7, I2C_FUNC_I2C, "7 registers from 250 are not within 0 to 255"},
        {1, 0x50, 0, 0, I2C_FUNC_I2C, "0 registers from 0 are not within 0 to 255"},
        {3, 0x50, 0, 1, I2C_FUNC_I2C, "No such file or directory"},
        {1, 0x51, 0, 1, I2C_FUNC_I2C, "Device or resource busy (a driver of the kernel owns it)"},
        {2, 0x03, 10, 2, I2C_FUNC_I2C, "ing 2 from register 0x0a: No such device or address"},
        {2, 0x77, 0, 2, I2C_FUNC_SMBUS_I2C_BLOCK, "register 0x00: No such device or address"},
        {2, 0x50, 0, 2, 0, "register 0x00: the adapter can do neither blocks nor bytes"},
    };
    for (const auto& [bus, address, first, count, functions, cause] : cases) {
        kernel.functions = functions;
        m_Read.assign(static_cast<std::size_t>(count), 9);
        const std::string subject = "nvrhw: I2C bus " + std::to_string(bus) + ", address 0x";
        EXPECT_EQ(m_I2C.writeRegisters(bus, address, first, m_Read), 0);
        m_Log.expectOne({subject, cause + " ("});
        EXPECT_EQ(m_I2C.readRegisters(bus, address, first, count, m_Read), 0);
        m_Log.expectOne({subject, cause + " ("});
        EXPECT_EQ(m_Read, Bytes(static_cast<std::size_t>(count), 9));
    }
    kernel.functions = I2C_FUNC_SMBUS_I2C_BLOCK;
    kernel.cut = 1;
    EXPECT_EQ(m_I2C.readRegisters(1, 0x50, 0, 33, m_Read), 0);
    m_Log.expectOne({"reading 33 from register 0x00: 31 came instead of 32"});
}

TEST_F(Controllers, KeepTheOperationsOfThreadsApart) {
    kernel.functions = I2C_FUNC_SMBUS_BYTE_DATA;
    std::future<int> other;
    kernel.afterTransfer = [&] { // in the midst of a write
        other = std::async(std::launch::async,
                           [&] { return m_I2C.readRegisters(2, 0x50, 0, 64, m_Read); });
        other.wait_for(std::chrono::milliseconds(100)); // long enough if nothing stopped it
    };
    EXPECT_EQ(m_I2C.writeRegisters(1, 0x50, 0, Bytes(64, 7)), 1);
    EXPECT_EQ(other.get(), 1);
    EXPECT_EQ(m_Read, Bytes(64, 7));
}

TEST_F(Controllers, TakeTheUsualClockWithoutAFileAndNoneWithABrokenOne) {
    EXPECT_EQ(m_Clock.init(), 1);
    expectRecord("SystemTime: " + real("/rtc.xml") + ": no such file: /dev/rtc0 in UTC is taken");
    expectKept({2026, 7, 1, 12, 30, 59}, 7, 1, 12);
    write("/rtc.xml", "<C/>");
    EXPECT_EQ(m_Clock.init(), 0);
    expectRecord("SystemTime: " + real("/rtc.xml:1: C has no element Device"));
    EXPECT_EQ(m_Clock.setHardwareFromSystem(), 0);
    expectRecord("SystemTime: no real-time clock is configured");
}

TEST_F(Controllers, TakeOnlyDatesThatThereAre) {
    configure("path='/dev/rtc0'");
    const std::pair<DateTime, std::string> refused[] = {
        {{1969, 12, 31, 0, 0, 0}, "1969-12-31 00:00:00: the year must be from 1970 to 9999"},
        {{2026, 13, 1, 0, 0, 0}, "2026-13-01 00:00:00: the month must be from 1 to 12"},
        {{2026, 1, 0, 0, 0, 0}, "2026-01-00 00:00:00: the day must be from 1 to 31"},
        {{2026, 2, 29, 0, 0, 0}, "2026-02-29 00:00:00: the day must be from 1 to 28"},
        {{2100, 2, 29, 0, 0, 0}, "2100-02-29 00:00:00: the day must be from 1 to 28"},
        {{2024, 2, 30, 0, 0, 0}, "2024-02-30 00:00:00: the day must be from 1 to 29"},
        {{2026, 4, 31, 0, 0, 0}, "2026-04-31 00:00:00: the day must be from 1 to 30"},
        {{2026, 1, 1, 24, 0, 0}, "2026-01-01 24:00:00: the hour must be from 0 to 23"},
        {{2026, 1, 1, 0, 60, 0}, "2026-01-01 00:60:00: the minute must be from 0 to 59"},
        {{2026, 1, 1, 0, 0, -1}, "2026-01-01 00:00:-1: the second must be from 0 to 59"},
        {{2100, 1, 1, 0, 0, 0}, "Numerical result out of range (beyond what the clock can hold)"},
    };
    for (const auto& [moment, cause] : refused) {
        EXPECT_EQ(m_Clock.setHardwareTime(moment), 0);
        m_Log.expectOne({"nvrhw: SystemTime: ", cause + " ("});
    }
    expectKept({2000, 2, 29, 0, 0, 0}, 2, 29, 0);
    expectKept({2024, 2, 29, 23, 59, 59}, 2, 29, 23);
}

TEST_F(Controllers, KeepLocalTimeWhereConfigured) {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    configure("path='/dev/rtc0' utc='false'");
    expectKept({2026, 1, 31, 23, 15, 30}, 2, 1, 0);
    expectKept({2026, 7, 31, 23, 15, 30}, 8, 1, 1);
    unsetenv("TZ");
    tzset();
}

TEST_F(Controllers, SetOneClockFromTheOtherOrSayWhyNot) {
    configure("path='/dev/rtc0' utc='1'");
    EXPECT_EQ(m_Clock.setHardwareTime({2001, 9, 9, 1, 46, 40}), 1);
    EXPECT_EQ(m_Clock.setSystemFromHardware(), 1);
    EXPECT_EQ(kernel.systemClock, 1000000000);
    const time_t before = time(nullptr);
    EXPECT_EQ(m_Clock.setHardwareFromSystem(), 1);
    EXPECT_EQ(m_Clock.setSystemFromHardware(), 1);
    EXPECT_TRUE(before <= kernel.systemClock && kernel.systemClock <= time(nullptr));

    kernel = Kernel();
    const std::string clock = real("/dev/rtc0");
    kernel.clockError = EACCES;
    EXPECT_EQ(m_Clock.setHardwareFromSystem(), 0);
    m_Log.expectOne({clock + ": setting it to 20",
                     ": Permission denied (the capability CAP_SYS_TIME is needed) ("});
    kernel.clockError = EINVAL;
    EXPECT_EQ(m_Clock.setSystemFromHardware(), 0);
    m_Log.expectOne({clock + ": reading: Invalid argument (it lost its power or was never set) ("});
    std::filesystem::remove(clock);
    EXPECT_EQ(m_Clock.setSystemFromHardware(), 0);
    expectRecord("SystemTime: " + clock + ": No such file or directory");
    EXPECT_EQ(kernel.systemClock, 0);
}

} // namespace

extern "C" [[gnu::visibility("default")]] int ioctl(int, unsigned long request, ...) noexcept {
    va_list list;
    va_start(list, request);
    errno = kernel.answer(request, va_arg(list, void*));
    va_end(list);
    return errno == 0 ? 0 : -1;
}

extern "C" [[gnu::visibility("default")]] int clock_settime(clockid_t, const timespec* t) noexcept {
    kernel.systemClock = t->tv_sec;
    return 0;
}
