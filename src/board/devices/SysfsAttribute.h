#pragma once

#include <string>

/// Attributes that the kernel shows as files with one line each.
class SysfsAttribute {
public:
    /// The line; empty when the kernel has none to show, which for many attributes is normal.
    static std::string read(const std::string& path);

    /// A number from 0 on; -1 when there is none, or one that an int does not hold.
    static int readNumber(const std::string& path);
};
