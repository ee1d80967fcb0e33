#include <benchmark/benchmark.h>
#include <future>
#include <thread>

// With a second thread, as in any recorder: the standard library counts without atomics otherwise.
int main(int argc, char** argv) {
    std::promise<void> end;
    std::thread second([&] { end.get_future().wait(); });
    benchmark::Initialize(&argc, argv);
    const bool isGood = !benchmark::ReportUnrecognizedArguments(argc, argv);
    if (isGood) {
        benchmark::RunSpecifiedBenchmarks();
    }
    end.set_value();
    second.join();
    return isGood ? 0 : 2;
}
