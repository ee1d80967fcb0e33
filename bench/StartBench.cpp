#include "BenchBoard.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <vector>

namespace {

/// In a fresh process each, as a start happens once in a process: what that measures.
void measure(benchmark::State& state, const std::string& side) {
    const BenchBoard board(16, 4);
    const auto program = std::filesystem::read_symlink("/proc/self/exe").string() + "-start";
    const std::string command = program + " " + side + " " + board.root();
    std::vector<long> kilobytes;
    for (auto _ : state) {
        double seconds = 0;
        long added = 0;
        FILE* const output = popen(command.c_str(), "re");
        const bool isRead = std::fscanf(output, "%lf %ld", &seconds, &added) == 2;
        if (pclose(output) != 0 || !isRead) {
            state.SkipWithError("the process did not end well");
            break;
        }
        state.SetIterationTime(seconds);
        kilobytes.push_back(added);
    }
    std::sort(kilobytes.begin(), kilobytes.end());
    state.counters["kilobytes"] =
        kilobytes.empty() ? 0 : static_cast<double>(kilobytes[kilobytes.size() / 2]);
}

void startOurs(benchmark::State& state) { measure(state, "ours"); }
void startPeer(benchmark::State& state) { measure(state, "peer"); }

BENCHMARK(startOurs)->Name("start/ours")->UseManualTime()->Iterations(20);
BENCHMARK(startPeer)->Name("start/peer")->UseManualTime()->Iterations(20);

} // namespace
