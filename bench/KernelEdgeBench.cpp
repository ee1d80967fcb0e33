#include "Edge.h"
#include "Recorder.h"
#include "board/qemu/SimChip.h"
#include "platform/Insight.h"

#include <atomic>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <thread>

namespace {

constexpr unsigned INPUTS = 16; // of a chip that is made once, as the kernel makes only so many

// The chip tells its edge with the next tick of the kernel, so what counts is when the kernel saw
// it.
Wire wireOf(const SimChip& chip, const std::function<std::int64_t()>& edge) {
    return {chip.attribute(0, "pull").string(), {"pull-down\n", "pull-up\n"}, [edge] {
                return Wire::Time(std::chrono::nanoseconds(edge()));
            }};
}

void edgeOurs(benchmark::State& state) {
    static const SimChip chip("ours", BenchBoard::BANK_LINES);
    chip.linkAs(Recorder::board().root(), 0);
    const auto edge = [] {
        std::int64_t nanoseconds = 0;
        Insight::findLastEdge(0, 0, nanoseconds);
        return nanoseconds;
    };
    wireOf(chip, edge).turnRecorder(state);
}

/// A loop as one would write it for 16 lines of one chip: a wait, the event, the levels.
class Loop {
public:
    Loop(const SimChip& chip, Arrival& arrival) : m_Arrival(arrival) {
        gpio_v2_line_request request{};
        for (unsigned i = 0; i < INPUTS; ++i) {
            request.offsets[i] = i;
        }
        request.num_lines = INPUTS;
        request.config.flags = GPIO_V2_LINE_FLAG_INPUT | GPIO_V2_LINE_FLAG_EDGE_RISING |
                               GPIO_V2_LINE_FLAG_EDGE_FALLING;
        const int device = open(chip.device().c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_EQ(ioctl(device, GPIO_V2_GET_LINE_IOCTL, &request), 0);
        close(device);
        m_Lines = request.fd;
        gpio_v2_line_values present{};
        present.mask = 1;
        EXPECT_EQ(ioctl(m_Lines, GPIO_V2_LINE_GET_VALUES_IOCTL, &present), 0);
        m_Last[0] = static_cast<int>(present.bits & 1); // as the last run has left it
        for (const int source : {m_Lines, m_End}) {
            epoll_event interest{};
            interest.events = EPOLLIN;
            interest.data.fd = source;
            epoll_ctl(m_Epoll, EPOLL_CTL_ADD, source, &interest);
        }
        m_Thread = std::thread([this] { run(); });
    }
    ~Loop() {
        eventfd_write(m_End, 1);
        m_Thread.join();
        for (const int descriptor : {m_Lines, m_End, m_Epoll}) {
            close(descriptor);
        }
    }

    std::int64_t edge() const { return m_Edge; }

private:
    void run() {
        epoll_event ready{};
        while (epoll_wait(m_Epoll, &ready, 1, -1) == 1 && ready.data.fd != m_End) {
            gpio_v2_line_event events[16];
            gpio_v2_line_values values{};
            values.mask = (1U << INPUTS) - 1;
            if (read(m_Lines, events, sizeof events) <= 0 ||
                ioctl(m_Lines, GPIO_V2_LINE_GET_VALUES_IOCTL, &values) != 0) {
                continue;
            }
            m_Edge = static_cast<std::int64_t>(events[0].timestamp_ns);
            for (unsigned i = 0; i < INPUTS; ++i) {
                const int level = static_cast<int>(values.bits >> i & 1);
                if (level != m_Last[i]) {
                    m_Last[i] = level;
                    m_Arrival.note();
                }
            }
        }
    }

    Arrival& m_Arrival;
    int m_Lines = -1;
    const int m_End = eventfd(0, EFD_CLOEXEC);
    const int m_Epoll = epoll_create1(EPOLL_CLOEXEC);
    int m_Last[INPUTS] = {};
    std::atomic<std::int64_t> m_Edge{0};
    std::thread m_Thread;
};

void edgePeer(benchmark::State& state) {
    static const SimChip chip("peer", INPUTS);
    Arrival arrival;
    const Loop loop(chip, arrival);
    wireOf(chip, [&] { return loop.edge(); }).turn(state, arrival);
}

BENCHMARK(edgeOurs)->Name("edge-kernel/ours")->UseManualTime()->MinTime(0.1);
BENCHMARK(edgePeer)->Name("edge-kernel/peer")->UseManualTime()->MinTime(0.1);

} // namespace
