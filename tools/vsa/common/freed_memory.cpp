#include "tools/vsa/common/freed_memory.h"

#include <cstdlib>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace vsa_tools {

void keepFreedMemory([[maybe_unused]] std::size_t blockBytes) {
#if defined(__GLIBC__)
  constexpr int FREE_BYTES = 1 << 26;
  ::mallopt(M_MMAP_THRESHOLD, static_cast<int>(blockBytes));
  ::mallopt(M_TRIM_THRESHOLD, FREE_BYTES);
#endif
}

}  // namespace vsa_tools
