#include "foundation/base/cpu_features.h"

#if defined(__x86_64__) || defined(__i386__)
#define VSA_CPU_HAS(feature) (__builtin_cpu_supports(feature) != 0)
#else
#define VSA_CPU_HAS(feature) false
#endif

namespace zn {

bool cpuHasSse41() {
  return VSA_CPU_HAS("sse4.1");
}

bool cpuHasSse42() {
  return VSA_CPU_HAS("sse4.2") && VSA_CPU_HAS("popcnt");
}

bool cpuHasAvx2() {
  return VSA_CPU_HAS("avx2") && VSA_CPU_HAS("bmi") && VSA_CPU_HAS("bmi2") && cpuHasSse42();
}

}  // namespace zn
