#pragma once

#include "print/Console.h"

#include <string>
#include <utility>
#include <vector>

/// A group of facts about the board as `nvrhw info` shows them.
struct InfoSection {
    struct Entry {
        std::string key; ///< for programs
        std::string label;
        Json value; ///< text or number
    };

    std::string key;
    std::string title;
    std::vector<Entry> entries;
    std::string problem; ///< why it could not be read; empty when it could
};

/// Collects the facts, each section for itself: what is broken does not hide the rest.
class BoardInfo {
public:
    BoardInfo() = delete;

    static InfoSection machine();
    static InfoSection package();
    static InfoSection components();

    /// The alarm lines of the hardware configuration.
    static InfoSection lines();

    /// The GPIO device's banks, of which kind each is.
    static InfoSection banks();

    static InfoSection versions();
};
