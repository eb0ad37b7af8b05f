// Google Benchmark's main, in front of it the child that measures memory.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

#include "bench/memory.h"

namespace bench {
void registerReads();
}

int main(int argc, char** argv) try {
  if (bench::answerPeakRequest(argc, argv)) return 0;
  bench::registerReads();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "vsa_bench: %s\n", error.what());
  return 1;
}
