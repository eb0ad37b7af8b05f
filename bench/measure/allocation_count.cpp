// Replaces four allocation functions. The new functions count their calls and then call glibc's
// allocator. They use its internal names, because the public names now belong to the new functions.
// The count is not atomic, because reads use a single thread.
#include "bench/measure/allocation_count.h"

namespace {
size_t allocations = 0;
}

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void* __libc_memalign(size_t alignment, size_t size);

void* malloc(size_t size) {
  ++allocations;
  return __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
  ++allocations;
  return __libc_calloc(count, size);
}

void* realloc(void* memory, size_t size) {
  ++allocations;
  return __libc_realloc(memory, size);
}

void* aligned_alloc(size_t alignment, size_t size) {
  ++allocations;
  return __libc_memalign(alignment, size);
}

}  // extern "C"

namespace bench {

size_t allocationCount() {
  return allocations;
}

}  // namespace bench
