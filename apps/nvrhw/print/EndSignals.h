#pragma once

#include <csignal>

/// Ctrl-C and kill, taken when the program is ready for them instead of interrupting it somewhere.
/// To be made before any thread is started, so that all of them inherit it.
class EndSignals {
public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// Readable when a signal is waiting.
    int file() const { return m_File; }

    /// Waits for a signal; false when none has come within the time.
    bool waitFor(int milliseconds) const;

private:
    int m_File;
};
