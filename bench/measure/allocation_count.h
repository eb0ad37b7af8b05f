// Counts allocations. A program that links allocation_count.cpp counts the calls of the C
// allocation functions, and so those of operator new.
#pragma once

#include <cstddef>

namespace bench {

// The number of calls of malloc, calloc, realloc and aligned_alloc since the start of the program.
size_t allocationCount();

}  // namespace bench
