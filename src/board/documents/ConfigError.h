#pragma once

#include "board/runtime/Guarded.h"
#include "platform/Cause.h"

#include <stdexcept>
#include <string>
#include <utility>

/// A configuration document cannot be used. It never leaves the board layer: each operation of the
/// seam ends in guard().
class ConfigError : public std::runtime_error {
public:
    /// `subject` is the element that the cause is about; empty when it is the file.
    explicit ConfigError(const Cause& cause, const std::string& subject = "")
        : std::runtime_error(textOf(cause, subject)), m_Cause(cause), m_Subject(subject) {}

    /// The file may be empty; `line` counts from 1, and is 0 when it is the whole file.
    ConfigError(const std::string& file, int line, const std::string& what)
        : ConfigError(Cause{what, file, line}) {}

    /// With the cause that errno gives.
    static ConfigError fromErrno(const std::string& file, const std::string& what = "") {
        return ConfigError(Cause::fromErrno(file, what));
    }

    const Cause& cause() const { return m_Cause; }
    const std::string& subject() const { return m_Subject; }

    /// Does a reader's work: 1, or 0 with the cause in the log and in lastFault().
    template <typename Action>
    static int guard(const char* subject, const char* file, int line, Action action) {
        if (std::exchange(hasFault(), false)) {
            keptFault() = Cause();
        }
        return guarded<ConfigError>(subject, file, line, [&] {
            try {
                action();
            } catch (const ConfigError& error) {
                keptFault() = error.cause();
                hasFault() = true;
                throw;
            }
        });
    }

    /// Of this thread's last guarded work; empty when it was done.
    static const Cause& lastFault() { return keptFault(); }

private:
    static Cause& keptFault() {
        thread_local Cause fault;
        return fault;
    }

    // Told apart, as most work is done and asking for the other takes a thread's first-use guard.
    static bool& hasFault() {
        thread_local bool has = false;
        return has;
    }

    static std::string textOf(Cause cause, const std::string& subject) {
        cause.what.insert(0, subject.empty() ? "" : subject + ": ");
        return cause.text();
    }

    Cause m_Cause;
    std::string m_Subject;
};
