#pragma once

#include <string>
#include <vector>

/// Finds what somebody may have meant who wrote a name that does not exist.
class Suggestion {
public:
    Suggestion() = delete;

    /// ": did you mean NAME?" with the known name that is so near that it must be meant; empty when
    /// there is none.
    static std::string among(const std::vector<std::string>& known, const std::string& written);
};
