#pragma once

#include <string>

/// A fault of a board's documents or lines.
struct Finding {
    /// An error makes the library fail or misread the board; a warning is almost surely a mistake.
    enum Severity { ERROR, WARNING };

    std::string file; ///< a path that opens from here
    int line;         ///< from 1; 0 when the whole file is meant
    Severity severity;
    std::string subject;
    std::string cause;

    const char* severityName() const { return severity == ERROR ? "error" : "warning"; }

    /// "FILE:LINE: error: SUBJECT: cause", as compilers write; without LINE when that is 0.
    std::string text() const {
        const std::string place = file + (line > 0 ? ":" + std::to_string(line) : "");
        return place + ": " + severityName() + ": " + subject + ": " + cause;
    }
};
