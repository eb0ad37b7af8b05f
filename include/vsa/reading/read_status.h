// How a reading ended: one status, and the limit that the text exceeded.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>

namespace vsa {

/// How a reading ended. In each case, everything that was applied to the scene before stays
/// applied.
enum class ReadStatus : std::uint8_t {
  Complete,        ///< The whole text was read and its links were resolved.
  StoppedByError,  ///< An error of the text ended the reading. No link was resolved.
  /// The text ends inside a statement, a string or a list and has no other error before its end, or
  /// it ends at a byte 0xFF.
  CutOff,
  /// The file or source could not be opened or read to its end, or another reading into the scene
  /// has not ended.
  Unreadable,
  Cancelled,    ///< The progress callback returned false.
  OverLimit,    ///< The text exceeds a limit; see ReadOutcome::limit.
  OutOfMemory,  ///< The library could not allocate memory, or the host threw std::bad_alloc.
  /// The host's scene, source or callback threw an exception other than std::bad_alloc; see
  /// ReadOutcome::exception.
  HostException,
};

/// The name of a status in kebab case, such as "stopped-by-error". Never null; "unknown" for a
/// value that is not in the enumeration.
VSA_API const char* name(ReadStatus status) noexcept;

/// Identifies a limit. See ReadLimits for the units.
enum class Limit : std::uint8_t {
  TextBytes,
  Memory,
  BufferBytes,
  Nodes,
  Elements,
  EmptyElements,  ///< zn::korvo_sdk::Scene::setEmptyElementLimit, a limit of the library's scene.
  Depth,
  Diagnostics,
};

/// The name of a limit in kebab case, such as "buffer-bytes". Never null; "unknown" for a value
/// that is not in the enumeration.
VSA_API const char* name(Limit limit) noexcept;

}  // namespace vsa
