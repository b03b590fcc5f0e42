// One entry point for every benchmark of the core.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
