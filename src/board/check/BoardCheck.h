#pragma once

#include "board/check/Findings.h"

/// Reads all documents of the board below the root directory, and its lines; starts nothing and
/// changes nothing.
///
/// Without an error among the findings, HardwareServiceFactory::start() loads the board and all its
/// lines can be read; with one, it ends the process, raises, logs or drives a wrong line.
class BoardCheck {
public:
    BoardCheck() = delete;

    enum Scope {
        EVERYTHING,
        DOCUMENTS, ///< what they say and whether there is a device, whatever becomes of its lines
        HARDWARE   ///< so much about the hardware configuration alone
    };

    /// Everything that was found, by file and line.
    static std::vector<Finding> run(Scope scope = EVERYTHING);
};
