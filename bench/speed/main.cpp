// The main function of vsa_bench.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

#include "bench/measure/memory.h"

namespace bench {
void registerBenchmarks();
}

int main(int argc, char** argv) try {
  if (bench::handlePeakRequest(argc, argv)) return 0;
  bench::registerBenchmarks();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench: %s\n", error.what());
  return 1;
}
