// keepFreedMemory(): makes the C library reuse freed memory instead of returning it to the system.
#pragma once

#include <cstddef>

namespace vsa_tools {

/// Makes the C library keep freed memory for the next allocations: blocks of less than `blockBytes`
/// (32 MiB at most), and up to 64 MiB at the end of the heap. Without it, the C library returns
/// large blocks to the system, which clears their pages before it hands them out again. Has no
/// effect with other C libraries than glibc.
void keepFreedMemory(std::size_t blockBytes);

}  // namespace vsa_tools
