#include "BenchBoard.h"
#include "config/ConfigFileNameConst.h"
#include "service/HardwareServiceFactory.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <functional>
#include <ini.h>
#include <pugixml.hpp>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

struct Cost {
    double seconds;
    long kilobytes; ///< of memory that is resident afterwards and was not before
};

long residentKilobytes() {
    long pages = 0;
    long resident = 0;
    FILE* const file = std::fopen("/proc/self/statm", "re");
    if (file != nullptr) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) {
            resident = 0;
        }
        std::fclose(file);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// In a process of its own, as a start happens once in a process.
Cost costOf(const std::function<void()>& action) {
    int ends[2];
    Cost cost{};
    if (pipe(ends) != 0) {
        return cost;
    }
    const pid_t child = fork();
    if (child == 0) {
        const long before = residentKilobytes();
        const auto begin = Clock::now();
        action();
        cost.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        cost.kilobytes = residentKilobytes() - before;
        _exit(write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &cost, sizeof cost) != sizeof cost) {
        cost = {};
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return cost;
}

void measure(benchmark::State& state, const std::function<void()>& action) {
    long most = 0;
    for (auto _ : state) {
        const Cost cost = costOf(action);
        if (cost.seconds == 0) {
            state.SkipWithError("the process did not end well");
            break;
        }
        state.SetIterationTime(cost.seconds);
        most = std::max(most, cost.kilobytes);
    }
    state.counters["kilobytes"] = static_cast<double>(most);
}

void startOurs(benchmark::State& state) {
    const BenchBoard board(16, 4);
    measure(state, [] { HardwareServiceFactory::getInstance()->start(); });
}

int takeField(void* /*user*/, const char* /*section*/, const char* name, const char* value) {
    benchmark::DoNotOptimize(name);
    benchmark::DoNotOptimize(value);
    return 1;
}

// Parses what the start reads, and looks at nothing in it.
void startPeer(benchmark::State& state) {
    using Names = ConfigFileNameConst;
    const BenchBoard board(16, 4);
    const std::string& root = board.root();
    measure(state, [&] {
        for (const std::string& name :
             {Names::getHardwareConfigFileName(), Names::getNVRAbilityFileName(),
              Names::getFileSystemFileName()}) {
            pugi::xml_document document;
            benchmark::DoNotOptimize(document.load_file((root + name).c_str()));
        }
        for (const std::string& name :
             {Names::getMachineInfoFileName(), Names::getSoftwarePackageFileName()}) {
            ini_parse((root + name).c_str(), takeField, nullptr);
        }
    });
}

BENCHMARK(startOurs)->Name("start/ours")->UseManualTime()->Iterations(20);
BENCHMARK(startPeer)->Name("start/peer")->UseManualTime()->Iterations(20);

} // namespace
