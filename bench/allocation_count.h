// How often memory was asked for. Linking allocation_count.cpp puts a counter in front of the C
// allocator (and so of operator new) of that one program.
#pragma once

#include <cstddef>

namespace bench {

// Calls of malloc, calloc, realloc and aligned_alloc since the program began.
size_t allocationCount();

}  // namespace bench
