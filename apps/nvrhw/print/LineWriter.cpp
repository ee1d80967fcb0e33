// A line is posted, waits in m_Lines, and is written; or it is left out because m_Capacity lines
// wait, and only counted. The count becomes a line of its own before the next line that finds room,
// and at the end: never may a line stand behind a gap that is not told. m_Mutex guards all but the
// constants; whoever posts has it, and the writer only between two lines, never while it writes.

#include "print/LineWriter.h"

#include <exception>
#include <utility>

LineWriter::LineWriter(std::size_t capacity, Write write, Gap gap)
    : m_Capacity(capacity), m_Write(std::move(write)), m_Gap(std::move(gap)) {}

LineWriter::~LineWriter() { finish(); }

void LineWriter::post(const std::string& line) {
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (!m_Thread.joinable()) {
        m_Thread = std::thread([this] { run(); });
    }
    if (m_Lines.size() >= m_Capacity) {
        ++m_LeftOut;
        return;
    }
    addGap();
    m_Lines.push_back(line);
    m_Changed.notify_one();
}

void LineWriter::finish() {
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        addGap();
        m_IsEnding = true;
        m_Changed.notify_one();
    }
    if (m_Thread.joinable()) {
        m_Thread.join();
    }
}

void LineWriter::run() {
    bool isWritten = true;
    std::unique_lock<std::mutex> lock(m_Mutex);
    for (;;) {
        m_Changed.wait(lock, [this] { return m_IsEnding || !m_Lines.empty(); });
        if (m_Lines.empty()) {
            return;
        }
        const std::string line = std::move(m_Lines.front());
        m_Lines.pop_front();
        lock.unlock();
        try {
            isWritten ? m_Write(line) : void();
        } catch (const std::exception&) {
            isWritten = false;
        }
        lock.lock();
    }
}

void LineWriter::addGap() {
    if (m_LeftOut > 0) {
        m_Lines.push_back(m_Gap(std::exchange(m_LeftOut, 0)));
    }
}
