#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>

/// A GPIO chip of this board's kernel whose far side, the wires, is in the test's hands, for as
/// long as this object lives. What fails throws std::runtime_error or filesystem_error.
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

    /// The kernel tells nobody of a change at this side, so this looks every millisecond.
    bool waitForValue(unsigned line, bool high, int milliseconds = 5000) const {
        for (int waited = 0; value(line) != high; ++waited) {
            if (waited == milliseconds) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

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

private:
    path attribute(unsigned line, const char* name) const {
        return m_Wires / ("sim_gpio" + std::to_string(line)) / name;
    }
    static void write(const path& file, const std::string& text) {
        if (!(std::ofstream(file) << text << std::flush)) {
            throw std::runtime_error(file.string() + ": cannot write " + text);
        }
    }
    static std::string read(const path& file) {
        std::string text;
        if (!(std::ifstream(file) >> text)) {
            throw std::runtime_error(file.string() + ": cannot read");
        }
        return text;
    }

    const path m_Folder;
    std::string m_Chip;
    path m_Wires;
};
