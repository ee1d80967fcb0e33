#pragma once

#include "platform/base/Export.h"

#include <cstddef>
#include <string>
#include <vector>

/// One object that was made with the tracking operator new and still lives.
struct NVRHW_API Allocation {
    const void* address; ///< where the object begins
    std::size_t size;    ///< bytes
    std::string file;    ///< base name of the source file that asked for it, without extension
    int line;            ///< of that file
};

/// Knows every living object that was allocated with a source position. Thread-safe; never
/// destroyed.
class NVRHW_API AllocationLedger {
public:
    /// What is still allocated, the oldest first.
    static std::vector<Allocation> outstanding();

    /// What the tracking operator new does.
    static void* allocate(std::size_t size, const char* file, int line);

    /// Frees memory that came from either operator new, striking it off the ledger if it is there.
    static void release(void* memory) noexcept;
};

/// The tracking allocation: `new (SOURCE, __LINE__) GPIOAlarmIn(...)`.
/// `file` is copied; throws std::bad_alloc as the plain operator does.
NVRHW_API void* operator new(std::size_t size, const char* file, int line);
NVRHW_API void operator delete(void* memory, const char* file, int line) noexcept;

/// Stands in the public part of every class that is allocated with a source position, so that an
/// ordinary `delete`, wherever it happens, strikes the object off the ledger.
#define NVRHW_TRACKED                                                                              \
    static void operator delete(void* memory) noexcept { AllocationLedger::release(memory); }      \
    static void operator delete(void* memory, const char*, int) noexcept {                         \
        AllocationLedger::release(memory);                                                         \
    }
