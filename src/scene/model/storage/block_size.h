// The size of the blocks that a scene cuts into objects and short lists. Internal.
#pragma once

#include <cstddef>

namespace zn::korvo_sdk {

/// In bytes, a power of two of at least 8192. The fuzzers define a smaller size: AddressSanitizer
/// maps each aligned block of 64 KiB from the system and returns it afterwards.
#if defined(VSA_SCENE_BLOCK_BYTES)
inline constexpr std::size_t SCENE_BLOCK_BYTES = VSA_SCENE_BLOCK_BYTES;
#else
inline constexpr std::size_t SCENE_BLOCK_BYTES = std::size_t{1} << 16;
#endif

}  // namespace zn::korvo_sdk
