#include "foundation/SafePointer.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

struct Object {
    int value = 0;
};

template <typename Pointer> void copy(benchmark::State& state) {
    const Pointer held(new Object);
    for (auto _ : state) {
        Pointer copy(held);
        benchmark::DoNotOptimize(copy);
    }
}

template <typename Pointer> void make(benchmark::State& state) {
    for (auto _ : state) {
        Pointer made(new Object);
        benchmark::DoNotOptimize(made);
    }
}

BENCHMARK(copy<SafePointer<Object>>)->Name("pointer-copy/ours");
BENCHMARK(copy<std::shared_ptr<Object>>)->Name("pointer-copy/peer");
BENCHMARK(make<SafePointer<Object>>)->Name("pointer-make/ours");
BENCHMARK(make<std::shared_ptr<Object>>)->Name("pointer-make/peer");

} // namespace
