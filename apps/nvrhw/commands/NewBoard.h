#pragma once

#include <string>

/// A board of one's own to start from: its lines at rest in files, and documents that agree with
/// them and with each other.
struct NewBoard {
    static constexpr int MOST_BANKS = 256;
    static constexpr int MOST_LINES = 64; ///< of a bank
    static constexpr int MOST_MONITORS = 16;

    int inputs = 8;
    int outputs = 2;
    int banks = 1;
    int monitors = 1;

    /// Writes it into this directory. Raises CommandError when a file cannot be written.
    void write(const std::string& directory) const;
};
