#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

/// Writes lines in a thread of its own, so that nobody who has something to tell waits for a
/// reader: what does not fit into its mailbox while the reader is slow is left out, and counted.
/// Thread-safe.
class LineWriter {
public:
    /// May take as long as it wants; what it raises ends the writing, not the program.
    using Write = std::function<void(const std::string& line)>;
    /// The line that stands where so many were left out.
    using Gap = std::function<std::string(int count)>;

    /// Keeps at most `capacity` lines, and perhaps one about a gap.
    LineWriter(std::size_t capacity, Write write, Gap gap);

    /// As finish().
    ~LineWriter();
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;

    /// Never waits for the reader. The first one starts the thread.
    void post(const std::string& line);

    /// Waits until all is written; nothing may be posted any more.
    void finish();

private:
    void run();
    void addGap();

    const std::size_t m_Capacity;
    const Write m_Write;
    const Gap m_Gap;
    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    std::deque<std::string> m_Lines;
    int m_LeftOut = 0;
    bool m_IsEnding = false;
    std::thread m_Thread;
};
