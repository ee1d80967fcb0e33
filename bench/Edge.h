#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>
#include <semaphore.h>
#include <string>

/// Where a change arrives: when it did, and whoever waits for it.
class Arrival {
public:
    Arrival() { sem_init(&m_Arrived, 0, 0); }
    void note() {
        m_Time = std::chrono::steady_clock::now();
        sem_post(&m_Arrived);
    }
    std::chrono::steady_clock::time_point wait() {
        sem_wait(&m_Arrived);
        return m_Time;
    }

private:
    sem_t m_Arrived{};
    std::chrono::steady_clock::time_point m_Time;
};

/// A file that gives a line its level, and what is written into it for 0 and 1.
struct Wire {
    using Time = std::chrono::steady_clock::time_point;

    std::string file;
    std::string texts[2];
    std::function<Time()> edge{}; ///< when the level turned, if that is later than the writing

    /// Turns the level over again and again and measures until each arrival.
    void turn(benchmark::State& state, Arrival& arrival) const;

    /// The way to a listener of the recorder, whose first input this is.
    void turnRecorder(benchmark::State& state) const;
};
