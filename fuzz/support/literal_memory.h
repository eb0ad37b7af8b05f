// The memory of buffer literals. A text names a size in a few characters, and by the reader's rules
// the memory of a literal that no input takes over is not freed: in millions of reads either would
// fill the machine. So calloc, which only buffer literals call, answers null past LARGEST_BUFFER,
// and what a read has left behind is freed after it. The programs are linked with --wrap=calloc and
// --wrap=free for that.
#pragma once

#include <cstddef>

namespace vsa_fuzz {

/// In bytes.
inline constexpr std::size_t LARGEST_BUFFER = std::size_t{1} << 18;

/// Frees the blocks that came from calloc and are still there. Only when no scene is left.
void freeLiteralsLeftBehind();

}  // namespace vsa_fuzz
