// The memory of buffer literals. A few characters of a text declare a buffer of any size, and the
// reader does not free a literal that no input takes ownership of. Over millions of reads, both
// would exhaust the memory. The programs are therefore linked with --wrap=calloc and --wrap=free:
// calloc, which only buffer literals call, returns null above MAX_LITERAL_BYTES, and leaked
// literals are freed after each read.
#pragma once

#include <cstddef>

namespace vsa_fuzz {

inline constexpr std::size_t MAX_LITERAL_BYTES = std::size_t{1} << 14;

/// Frees all blocks from calloc that were not freed. Call it only when no scene exists.
void freeLeakedLiterals();

}  // namespace vsa_fuzz
