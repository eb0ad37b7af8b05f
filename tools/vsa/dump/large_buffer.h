// Finds buffers that are too large to be printed without --large-buffers.
#pragma once

#include <cstdint>
#include <string>

#include <vsa/view.h>
#include "tools/vsa/dump/dump_selection.h"

namespace vsa_tools {

/// The maximum number of bytes of one buffer in memory that are printed without --large-buffers.
/// There is a limit because a few bytes of text can declare a far larger buffer.
inline constexpr std::uint64_t MAX_BUFFER_BYTES = std::uint64_t{1} << 30;

/// Returns the path of a selected buffer of which more than MAX_BUFFER_BYTES would be printed.
/// Returns an empty text if there is none. At most `maxElements` elements of each buffer are
/// printed.
std::string largeBufferOf(vsa::SceneView scene, const DumpSelection& selection,
                          std::uint64_t maxElements);

}  // namespace vsa_tools
