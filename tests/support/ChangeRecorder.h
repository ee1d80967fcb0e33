#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <nvrhw/nvrhw.h>
#include <string>
#include <utility>
#include <vector>

/// Writes down what a board tells: "3=alarm ", "3~normal " for a present state, "3=alarm+2 " when
/// two changes before it were left out; "2:flash began " for outputs.
class ChangeRecorder {
public:
    void operator()(const nvrhw::InputChange& change) {
        add(change.leftOut, std::to_string(change.input.id) + (change.isPresent ? "~" : "=") +
                                toText(change.state));
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Inputs.push_back(change);
    }
    void operator()(const nvrhw::OutputChange& change) {
        const std::string level =
            change.kind == nvrhw::OutputChange::Driven ? " " + std::to_string(change.level) : "";
        add(change.leftOut, std::to_string(change.output.id) + ":" + toText(change.operation) +
                                " " + toText(change.kind) + level);
    }

    /// What has come since the last call.
    std::string take() {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return std::exchange(m_Journal, {});
    }

    /// Waits until what has come since the last take() ends with this, and takes it; after ten
    /// seconds whatever has come.
    std::string takeUpTo(const std::string& end) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_Arrived.wait_for(lock, std::chrono::seconds(10), [&] {
            return m_Journal.size() >= end.size() &&
                   m_Journal.compare(m_Journal.size() - end.size(), end.size(), end) == 0;
        });
        return std::exchange(m_Journal, {});
    }

    /// All that was told of inputs.
    std::vector<nvrhw::InputChange> inputs() const {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Inputs;
    }

private:
    void add(unsigned leftOut, const std::string& text) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Journal += text + (leftOut > 0 ? "+" + std::to_string(leftOut) : "") + " ";
        m_Arrived.notify_all();
    }

    mutable std::mutex m_Mutex;
    std::condition_variable m_Arrived;
    std::string m_Journal;
    std::vector<nvrhw::InputChange> m_Inputs;
};
