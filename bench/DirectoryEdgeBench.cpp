#include "Edge.h"
#include "Recorder.h"

#include <atomic>
#include <fcntl.h>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int INPUTS = 16;

Wire wireOf(const BenchBoard& board) { return {board.fileOf(1), {"0\n", "1\n"}}; }

void edgeOurs(benchmark::State& state) { wireOf(Recorder::board()).turnRecorder(state); }

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
    wireOf(board).turn(state, arrival);
}

BENCHMARK(edgeOurs)->Name("edge-directory/ours")->UseManualTime()->MinTime(0.1);
BENCHMARK(edgePeer)->Name("edge-directory/peer")->UseManualTime()->MinTime(0.1);

} // namespace
