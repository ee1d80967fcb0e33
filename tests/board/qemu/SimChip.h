#pragma once

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/gpio.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

/// A GPIO chip of this board's kernel whose far side, the wires, is in the test's hands, for as
/// long as this object lives. What fails fails the test.
class SimChip {
public:
    using path = std::filesystem::path;

    /// Chips of one process that live at the same time need different names.
    SimChip(const std::string& name, unsigned lines)
        : m_Folder("/sys/kernel/config/gpio-sim/" + name + "-" + std::to_string(getpid())) {
        std::filesystem::create_directories(m_Folder / "bank0");
        write(m_Folder / "bank0/num_lines", std::to_string(lines));
        restore();
    }

    ~SimChip() {
        std::ofstream(m_Folder / "live") << "0"; // fails when the test has removed it
        std::error_code ignored;
        std::filesystem::remove(m_Folder / "bank0", ignored);
        std::filesystem::remove(m_Folder, ignored);
    }
    SimChip(const SimChip&) = delete;

    std::string device() const { return "/dev/" + m_Chip; }

    /// Sets the level that an input sees.
    void pull(unsigned line, bool high) {
        write(attribute(line, "pull"), high ? "pull-up" : "pull-down");
    }

    /// The level on the wire: that of whoever drives the line, else the pulled one.
    bool value(unsigned line) const { return read(attribute(line, "value")) == "1"; }

    /// The chip vanishes, whoever has it open, and comes back with all wires pulled low, maybe
    /// under another number: links to it are to be made anew.
    void remove() { write(m_Folder / "live", "0"); }
    void restore() {
        write(m_Folder / "live", "1");
        m_Chip = read(m_Folder / "bank0/chip_name");
        m_Wires = "/sys/devices/platform/" + read(m_Folder / "dev_name") + "/" + m_Chip;
    }

    /// Makes the chip a bank of the board in this folder, in place of what was there.
    void linkAs(const path& board, int group) const {
        const path link = board / "dev/gpiodrv" / std::to_string(group);
        std::filesystem::create_directories(link.parent_path());
        std::filesystem::remove_all(link);
        std::filesystem::create_symlink(device(), link);
    }

    /// The kernel's file for the far side of a line: "pull", "value".
    path attribute(unsigned line, const char* name) const {
        return m_Wires / ("sim_gpio" + std::to_string(line)) / name;
    }

private:
    static void write(const path& file, const std::string& text) {
        EXPECT_TRUE(std::ofstream(file) << text << std::flush) << file << ": cannot write " << text;
    }
    static std::string read(const path& file) {
        std::string text;
        EXPECT_TRUE(std::ifstream(file) >> text) << file << ": cannot read";
        return text;
    }

    const path m_Folder;
    std::string m_Chip;
    path m_Wires;
};

/// One line held by someone else than the code under test; while this lives nobody else gets it.
/// A line that is held already fails the test.
class LineRequest {
public:
    /// flags: GPIO_V2_LINE_FLAG_INPUT, or GPIO_V2_LINE_FLAG_OUTPUT, which starts low.
    LineRequest(const std::string& device, unsigned line, std::uint64_t flags) {
        const int chip = open(device.c_str(), O_RDWR | O_CLOEXEC);
        gpio_v2_line_request request = {};
        request.offsets[0] = line;
        request.num_lines = 1;
        request.config.flags = flags;
        std::strcpy(request.consumer, "someone-else");
        EXPECT_EQ(ioctl(chip, GPIO_V2_GET_LINE_IOCTL, &request), 0)
            << device << " line " << line << ": " << std::strerror(errno);
        close(chip);
        m_Line = request.fd;
    }
    ~LineRequest() { close(m_Line); }
    LineRequest(const LineRequest&) = delete;
    LineRequest& operator=(const LineRequest&) = delete;

private:
    int m_Line = -1;
};
