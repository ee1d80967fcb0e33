#pragma once

#include <csignal>

/// The signals that concern the panel, taken by its loop instead of interrupting some thread. To
/// be made before any thread is started, so that all of them inherit it.
class Signals {
public:
    Signals();

    /// From now on the signals have their usual effect again.
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// Readable when a signal has come.
    int file() const { return m_File; }

    /// The number of a signal that has come; 0 when there is none.
    int take() const;

private:
    sigset_t m_Signals;
    int m_File;
};
