#pragma once

#include "platform/Time.h"

#include <cstdarg>
#include <cstdio>

/// Prints one line with the seconds since the program started, whole even when threads mix.
__attribute__((format(printf, 1, 2))) inline void say(const char* format, ...) {
    static const TarvikTime start = TarvikTime::currentTime();
    const TarvikTime now = TarvikTime::currentTime();
    const double seconds = now.getSeconds() - start.getSeconds() +
                           (now.getMicroseconds() - start.getMicroseconds()) / 1e6;
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::printf("[%7.3f] %s\n", seconds, text);
    std::fflush(stdout);
}
