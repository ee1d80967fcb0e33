#include "BenchBoard.h"
#include "alarm/IHardwareAlarmListener.h"
#include "alarm/IOAlarmInManager.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fcntl.h>
#include <semaphore.h>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int INPUTS = 16;

/// Where a change arrives: when it did, and whoever waits for it.
class Arrival {
public:
    Arrival() { sem_init(&m_Arrived, 0, 0); }
    void note() {
        m_Time = Clock::now();
        sem_post(&m_Arrived);
    }
    Clock::time_point wait() {
        sem_wait(&m_Arrived);
        return m_Time;
    }

private:
    sem_t m_Arrived;
    Clock::time_point m_Time;
};

class Listener : public IHardwareAlarmListener {
public:
    void update(IMessage* /*message*/) override { m_Arrival.note(); }
    Arrival m_Arrival;
};

/// Turns the first input's level over and measures until the arrival.
void turn(benchmark::State& state, const BenchBoard& board, Arrival& arrival) {
    const int line = open(board.fileOf(1).c_str(), O_RDWR | O_CLOEXEC);
    char present = '0';
    int level = pread(line, &present, 1, 0) == 1 && present == '1' ? 1 : 0;
    for (auto _ : state) {
        level = 1 - level;
        const char* const text = level != 0 ? "1\n" : "0\n";
        const auto begin = Clock::now();
        if (pwrite(line, text, 2, 0) != 2) {
            state.SkipWithError("the line cannot be written");
            break;
        }
        state.SetIterationTime(std::chrono::duration<double>(arrival.wait() - begin).count());
    }
    close(line);
}

// The factory starts once in a process, on one board.
void edgeOurs(benchmark::State& state) {
    static const BenchBoard board(INPUTS, 1);
    GlobalEnv::getInstance()->setRootDirectory(board.root());
    HardwareServiceFactory* const factory = HardwareServiceFactory::getInstance();
    factory->start();
    Listener listener;
    auto& manager =
        dynamic_cast<SafePointer<IOAlarmInManager>&>(*factory->getService("IOAlarmInManager"));
    manager->notifyAlarmConsumers(false);
    const int number = manager->addListener(&listener);
    turn(state, board, listener.m_Arrival);
    manager->removeListener(number);
    factory->stop();
}

/// A loop as one would write it for this board alone.
class Loop {
public:
    Loop(const BenchBoard& board, Arrival& arrival) : m_Arrival(arrival) {
        m_Inotify = inotify_init1(IN_CLOEXEC);
        const std::string file = board.fileOf(1);
        inotify_add_watch(m_Inotify, file.substr(0, file.rfind('/')).c_str(), IN_MODIFY);
        for (int id = 1; id <= INPUTS; ++id) {
            m_Files[id - 1] = board.fileOf(id);
        }
        m_Thread = std::thread([this] { run(); });
    }
    ~Loop() {
        m_IsEnding = true;
        close(open(m_Files[0].c_str(), O_WRONLY | O_TRUNC));
        m_Thread.join();
        close(m_Inotify);
    }

private:
    void run() {
        char events[4096];
        while (read(m_Inotify, events, sizeof events) > 0 && !m_IsEnding) {
            char levels[INPUTS] = {};
            for (int i = 0; i < INPUTS; ++i) {
                char text[16];
                const int file = open(m_Files[i].c_str(), O_RDONLY | O_CLOEXEC);
                levels[i] = read(file, text, sizeof text) > 0 ? text[0] : m_Last[i];
                close(file);
            }
            for (int i = 0; i < INPUTS; ++i) {
                if (levels[i] != m_Last[i]) {
                    m_Last[i] = levels[i];
                    m_Arrival.note();
                }
            }
        }
    }

    Arrival& m_Arrival;
    int m_Inotify;
    std::string m_Files[INPUTS];
    char m_Last[INPUTS] = {'0', '0', '0', '0', '0', '0', '0', '0',
                           '0', '0', '0', '0', '0', '0', '0', '0'};
    std::atomic<bool> m_IsEnding{false};
    std::thread m_Thread;
};

void edgePeer(benchmark::State& state) {
    const BenchBoard board(INPUTS, 1);
    Arrival arrival;
    const Loop loop(board, arrival);
    turn(state, board, arrival);
}

BENCHMARK(edgeOurs)->Name("edge-directory/ours")->UseManualTime()->MinTime(0.1);
BENCHMARK(edgePeer)->Name("edge-directory/peer")->UseManualTime()->MinTime(0.1);

} // namespace
