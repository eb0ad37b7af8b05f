#include "foundation/cpu_features.h"

namespace zn {

bool cpuHasSse41() {
#if defined(__x86_64__) || defined(__i386__)
  return __builtin_cpu_supports("sse4.1") != 0;
#else
  return false;
#endif
}

}  // namespace zn
