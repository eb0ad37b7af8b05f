// Buffers that are too large to be printed unasked.
#pragma once

#include <cstdint>
#include <string>

#include <vsa/view.h>
#include "tools/vsa/dump/dump_selection.h"

namespace vsa_tools {

/// Bytes of elements that are printed of one buffer without --large-buffers. A larger buffer needs
/// only a few bytes of text, because its count is declared.
inline constexpr std::uint64_t MAX_BUFFER_BYTES = std::uint64_t{1} << 30;

/// The path of a chosen buffer of which more bytes of elements would be printed; empty if there is
/// none. At most `maxElements` of each are printed.
std::string largeBufferOf(vsa::SceneView scene, const DumpSelection& selection,
                          std::uint64_t maxElements);

}  // namespace vsa_tools
