#pragma once

#include "Findings.h"

/// Reads all documents of the board below the root directory, and its lines; starts nothing and
/// changes nothing.
///
/// Without an error among the findings, HardwareServiceFactory::start() loads the board and all its
/// lines can be read; with one, it ends the process, raises, logs or drives a wrong line.
class BoardCheck {
public:
    BoardCheck() = delete;

    /// Everything that was found, by file and line.
    static std::vector<Finding> run();
};
