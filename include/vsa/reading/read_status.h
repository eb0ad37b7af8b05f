// ReadStatus and Limit: how a reading ended, and which limit the text exceeded.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>

namespace vsa {

/// How a reading ended. Everything that the reading applied to the scene before its end remains
/// applied.
enum class ReadStatus : std::uint8_t {
  Complete,        ///< The whole text was read and its links were resolved.
  StoppedByError,  ///< An error in the text ended the reading. No link was resolved.
  /// The text ends at a byte 0xFF, or inside a statement, a string or a list. No error before the
  /// end has ended the reading. ReadOutcome::applied tells whether the links were resolved.
  CutOff,
  /// The file or source could not be opened or read to its end, the path or text is null, or the
  /// path contains a NUL. Or another reading into the same scene has not ended yet. Or loadBuffer
  /// has not found the same literal.
  Unreadable,
  Cancelled,    ///< The progress callback returned false.
  OverLimit,    ///< The text exceeds a limit; see ReadOutcome::limit.
  OutOfMemory,  ///< The library could not allocate memory, or the host threw std::bad_alloc.
  /// The host's scene, source or callback threw an exception other than std::bad_alloc. See
  /// ReadOutcome::exception.
  HostException,
};

/// Returns the name of a status in kebab case, such as "stopped-by-error". Returns "unknown" for
/// any other number. The result is never null.
VSA_API const char* name(ReadStatus status) noexcept;

/// Identifies a limit. ReadLimits describes them, except EmptyElements. Elements is also the limit
/// of one array in a scene of the library, 2^32 elements. Depth is also the limit of a scene:
/// zn::korvo_sdk::Scene::setDepthLimit or HostScene::depthLimit.
enum class Limit : std::uint8_t {
  TextBytes,
  Memory,
  BufferBytes,
  Nodes,
  Elements,
  EmptyElements,  ///< A limit of the scene: zn::korvo_sdk::Scene::setEmptyElementLimit or
                  ///< HostScene::emptyElementLimit.
  Depth,
  Diagnostics,
};

/// Returns the name of a limit in kebab case, such as "buffer-bytes". Returns "unknown" for any
/// other number. The result is never null.
VSA_API const char* name(Limit limit) noexcept;

}  // namespace vsa
