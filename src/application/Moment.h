#pragma once

#include "platform/base/Export.h"

#include <chrono>
#include <string>

namespace nvrhw {

/// Wall-clock time, microseconds since 1970-01-01 00:00 UTC.
using WallTime = std::chrono::time_point<std::chrono::system_clock, std::chrono::microseconds>;

/// "14:03:07.412", in the local time of the process.
NVRHW_API std::string clockText(WallTime time);

/// When something happened, by both clocks: the wall clock is for people and other machines and may
/// jump; the steady one is for intervals.
struct NVRHW_API Moment {
    WallTime wall{};                                ///< for people and other machines
    std::chrono::steady_clock::time_point steady{}; ///< for intervals

    /// The present moment.
    static Moment now() { return at(std::chrono::steady_clock::now()); }

    /// The wall clock's time of a moment of the steady one, as the clocks stand now.
    static Moment at(std::chrono::steady_clock::time_point steady) {
        using namespace std::chrono;
        const auto age = duration_cast<microseconds>(steady_clock::now() - steady);
        return {time_point_cast<microseconds>(system_clock::now()) - age, steady};
    }
};

} // namespace nvrhw
