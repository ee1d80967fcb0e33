#pragma once

#include <atomic>

/// How often the process has allocated so far; for programs that link Allocations.cpp.
extern std::atomic<long> allocations;
