#pragma once

#include "platform/GPIOLineSettings.h"

#include <cstdint>

/// A line of a GPIO chip and how the kernel shall treat it.
struct KernelLine {
    enum Role {
        AS_IS,  ///< read without a change of its direction
        INPUT,  ///< watched for both edges, unless it is silent
        OUTPUT, ///< driven
    };

    int bit = 0;
    Role role = AS_IS;
    GPIOLineSettings settings{};
    bool isAlone = false;  ///< it must not share a request, which is closed when others come
    bool isSilent = false; ///< an input whose changes the kernel cannot report

    /// The kernel's line flags.
    std::uint64_t flags() const;

    /// Microseconds; 0 for none.
    std::uint32_t debounce() const;
};
