#pragma once

#include "platform/Gpio.h"

#include <string>

/// A directory board in a temporary directory, the root directory for as long as the object lives:
/// documents for this many inputs and outputs, and their lines, all 0.
class BenchBoard {
public:
    static constexpr int BANK_LINES = 64;

    BenchBoard(int inputs, int outputs);
    ~BenchBoard();
    BenchBoard(const BenchBoard&) = delete;
    BenchBoard& operator=(const BenchBoard&) = delete;

    const std::string& root() const { return m_Root; }

    /// Where the line of an input lies; ids count from 1. Outputs lie behind the inputs' banks.
    static IOInfo lineOf(int input);
    std::string fileOf(int input) const;

    /// Makes a file, by its path on the board.
    void writeFile(const std::string& path, const std::string& text) const;

private:
    std::string m_Root;
};
