#pragma once

#include <cstdint>

/// When the lines of this process last changed, of banks that are told so by the kernel, whichever
/// device they belong to. Thread-safe.
class GPIOEdgeTable {
public:
    /// The time is in nanoseconds of CLOCK_MONOTONIC. Allocates at the first edge of a line only.
    static void note(int group, int bit, std::uint64_t nanoseconds);

    /// False, and `nanoseconds` untouched, when no edge is known. Does not allocate.
    static bool find(int group, int bit, std::int64_t& nanoseconds);

    /// The bank has gone, and its edges with it.
    static void forget(int group);
};
