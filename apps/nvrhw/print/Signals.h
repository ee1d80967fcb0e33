#pragma once

#include <csignal>
#include <initializer_list>

/// Signals that are taken when the program is ready for them instead of interrupting it somewhere.
/// To be made before any thread is started, so that all of them inherit it. One that is ignored
/// (as under nohup) stays so.
class Signals {
public:
    explicit Signals(std::initializer_list<int> wanted = {SIGINT, SIGTERM, SIGHUP});

    /// From now on the signals have their usual effect again.
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// Readable when a signal has come.
    int file() const { return m_File; }

    /// The number of a signal that has come; 0 when there is none.
    int take() const;

    /// Waits for a signal and takes it; 0 when none has come within the time.
    int waitFor(int milliseconds) const;

private:
    sigset_t m_Signals;
    int m_File;
};
