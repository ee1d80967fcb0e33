#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/// An event that one thread reports and another waits for, or several of them, counted.
class Gate {
public:
    void open() {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        ++m_Count;
        m_Opened.notify_all(); // while locked: the waiting thread may destroy the gate afterwards
    }

    /// Opens it when the calling thread has ended and released all it held. Once per thread.
    void openAtThreadEnd() {
        struct Opener {
            Gate& gate;
            ~Opener() { gate.open(); }
        };
        static thread_local Opener opener{*this};
    }

    /// Blocks until the gate was opened `count` times in all; false when that has not happened
    /// within ten seconds.
    bool wait(int count = 1) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        return m_Opened.wait_for(lock, std::chrono::seconds(10), [&] { return m_Count >= count; });
    }

    int count() const {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Count;
    }

private:
    mutable std::mutex m_Mutex;
    std::condition_variable m_Opened;
    int m_Count = 0;
};
