#pragma once

#include <cstdio>
#include <string>

/// A number as data sheets write it: at least two digits, as in "0x0a".
inline std::string hexText(int number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%02x", static_cast<unsigned>(number));
    return text;
}
