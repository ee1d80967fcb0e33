#pragma once

#include "platform/Cause.h"

#include <string>
#include <vector>

struct stat;

/// A device of banks as it lies in the file system, a directory with one entry per group. Looking
/// at it takes no line and changes nothing.
class GPIODevice {
public:
    /// The device that is used where nobody names another, below the root directory.
    static constexpr char PATH[] = "/dev/gpiodrv";

    /// What an entry leads to.
    enum Kind { NO_BANK, SIMULATED, KERNEL };

    struct Bank {
        int group;
        bool isThere = false; ///< it has an entry
        Kind kind = NO_BANK;
        std::string chip{};  ///< of a kernel bank: the name of its device
        std::string label{}; ///< of a kernel bank: what its driver calls it
        int lines = -1;      ///< below 0 when that cannot be seen
        Cause fault{};       ///< why no line of it can be used; empty when they can
    };

    static Kind kindOf(const struct stat& entry);

    /// "simulated", "kernel"; empty for no bank.
    static const char* nameOf(Kind kind);

    /// Why an entry of no such kind cannot be used.
    static Cause notABank(const std::string& path);

    /// Why this process cannot enter a directory; empty when it can.
    static Cause notEntered(const std::string& directory);

    /// An empty path stands for no device.
    explicit GPIODevice(std::string path) : m_Path(std::move(path)) {}

    const std::string& path() const { return m_Path; }
    std::string pathOf(int group) const { return m_Path + "/" + std::to_string(group); }

    /// Why it is none; empty when it is there.
    Cause fault() const;

    Bank look(int group) const;

    /// All whose entries are named as groups are, by group; empty, and `cause`, when the directory
    /// cannot be read.
    std::vector<Bank> banks(Cause& cause) const;

private:
    const std::string m_Path;
};
