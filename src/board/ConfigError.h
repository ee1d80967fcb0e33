#pragma once

#include "platform/Diagnostics.h"

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

/// Why a configuration document cannot be used: "<file>:<line>: <subject>: <cause>", without what
/// is not known. It never leaves the board layer: each operation of the seam ends in guard().
class ConfigError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// With the cause that errno gives.
    static ConfigError fromErrno(const std::string& subject) {
        return ConfigError(subject + ": " + std::generic_category().message(errno));
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
