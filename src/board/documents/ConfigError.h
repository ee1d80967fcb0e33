#pragma once

#include "board/runtime/ErrnoText.h"
#include "board/runtime/Guarded.h"

#include <stdexcept>
#include <string>

/// Why a configuration document cannot be used: "<file>:<line>: <subject>: <cause>", without what
/// is not known. It never leaves the board layer: each operation of the seam ends in guard().
class ConfigError : public std::runtime_error {
public:
    explicit ConfigError(const std::string& text) : std::runtime_error(text), m_Cause(text) {}

    /// `line` counts from 1; 0 when it is the whole file. `subject` may be empty.
    ConfigError(const std::string& file, int line, const std::string& subject,
                const std::string& cause)
        : std::runtime_error(file + (line > 0 ? ":" + std::to_string(line) : "") + ": " +
                             (subject.empty() ? "" : subject + ": ") + cause),
          m_Line(line), m_Cause(cause) {}

    /// With the cause that errno gives.
    static ConfigError fromErrno(const std::string& file) {
        return {file, 0, "", std::generic_category().message(errno)};
    }

    int line() const { return m_Line; }

    /// Without file, line and subject, as far as they are known.
    const std::string& cause() const { return m_Cause; }

    /// Does a reader's work: 1, or 0 with the cause in the log.
    template <typename Action>
    static int guard(const char* subject, const char* file, int line, Action action) {
        return guarded<ConfigError>(subject, file, line, action);
    }

private:
    int m_Line = 0;
    std::string m_Cause;
};
