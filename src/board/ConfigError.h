#pragma once

#include "board/ErrnoText.h"
#include "platform/Diagnostics.h"

#include <stdexcept>
#include <string>

/// Why a configuration document cannot be used: "<file>:<line>: <subject>: <cause>", without what
/// is not known. It never leaves the board layer: each operation of the seam ends in guard().
class ConfigError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// With the cause that errno gives.
    static ConfigError fromErrno(const std::string& subject) {
        return ConfigError(errnoText(subject));
    }

    /// Does a reader's work: 1, or 0 with the cause in the log.
    template <typename Action>
    static int guard(const char* subject, const char* file, int line, Action action) {
        try {
            action();
            return 1;
        } catch (const ConfigError& error) {
            Logger::writeLog(subject, error.what(), file, line);
            return 0;
        }
    }
};
