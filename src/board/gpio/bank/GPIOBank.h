#pragma once

#include "board/gpio/bank/GPIOBankWatch.h"
#include "platform/Cause.h"

#include <memory>
#include <string>
#include <vector>

struct stat;

/// One line to read and what came of it.
struct GPIOReading {
    int group = 0;
    int bit = 0;
    int level = 0; ///< 0 or 1; without meaning when there is a cause
    Cause cause{}; ///< why the line could not be read; empty when it could
};

/// The lines of one group. The driver and the detectors of a process share it: every operation may
/// be called from several threads at once. Bits are not negative. A bank may be gone at any time;
/// its operations then fail.
class GPIOBank {
public:
    virtual ~GPIOBank() = default;

    /// False when the bank's entry in the device's directory, as it is now, is not this bank.
    virtual bool isCurrent(const struct stat& entry) = 0;

    /// True when a watch notices at once that the entry is touched.
    virtual bool isWatched() { return false; }

    /// Lets go of what it holds, as another bank takes its place; its operations fail from now on.
    virtual void retire() {}

    /// Reads lines of this bank, each into its reading.
    virtual void read(const std::vector<GPIOReading*>& readings) = 0;

    /// Makes a line an output with the level 0 or 1. False, and `cause`, on failure.
    virtual bool drive(int bit, int level, Cause& cause) = 0;

    /// A watch that does not cover any line yet; null, and `cause`, on failure.
    virtual std::unique_ptr<GPIOBankWatch> watch(Cause& cause) = 0;
};
