#pragma once

#include "board/gpio/bank/DirectoryEvents.h"

#include <set>
#include <string>
#include <utility>

/// Notices that an entry of a directory, or the device node it leads to, is made, moved or removed.
class EntrySentinel {
public:
    /// False, and `cause`, on failure.
    bool begin(const std::string& directory, const std::string& entry, Cause& cause);

    /// Readable when isDisturbed() has something to find.
    int getDescriptor() const { return m_Events.getDescriptor(); }

    /// True when something has happened since the last call. Does not block.
    bool isDisturbed();

private:
    bool observe(const std::string& directory, const std::string& name, Cause& cause);

    DirectoryEvents m_Events;
    std::set<std::pair<int, std::string>> m_Names; // each with the number of its directory
};
