// Limits the memory of buffer literals. There are two problems. A few characters of a text can
// declare a buffer of any size. And the reader does not free a literal that no input takes
// ownership of, so the memory would run out after millions of reads.
//
// The programs are therefore linked with --wrap=calloc and --wrap=free. Only buffer literals call
// calloc. The wrapper of calloc returns null for more than MAX_LITERAL_BYTES. Leaked literals are
// freed when the last FuzzScene is destroyed.
#pragma once

#include <cstddef>

namespace vsa_fuzz {

inline constexpr std::size_t MAX_LITERAL_BYTES = std::size_t{1} << 14;

/// Frees all blocks from calloc that are not freed. Must not be called while a scene exists,
/// because the scene may own such blocks.
void freeLeakedLiterals();

}  // namespace vsa_fuzz
