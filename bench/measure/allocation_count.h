// Counts allocations. If a program links allocation_count.cpp, the calls of four C allocation
// functions are counted, including the calls by operator new.
#pragma once

#include <cstddef>

namespace bench {

// Returns the number of calls of malloc, calloc, realloc and aligned_alloc since the start of the
// program.
size_t allocationCount();

}  // namespace bench
