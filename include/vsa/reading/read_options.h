// The options of a reading: limits, callbacks, and which parts of a text are kept. Each call has
// its own options.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <vsa/reading/read_diagnostic.h>

namespace vsa {

/// The value of a limit that allows any amount.
inline constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();

/// Upper bounds of one reading. The limit itself is allowed. A text that exceeds a limit ends the
/// reading with ReadStatus::OverLimit and a diagnostic, before the library allocates the memory. A
/// buffer that is too large is the only case that does not end the reading: the input gets an empty
/// buffer of the element type, and the status at the end is OverLimit. The diagnostic OverLimit
/// names the input, the declared count, and how much the text contains. A limit of 0 allows
/// nothing.
struct ReadLimits {
  /// Bytes of the text, without a byte order mark. If the size is known in advance and exceeds the
  /// limit, the text is not read.
  std::uint64_t textBytes = UNLIMITED;
  /// Bytes of memory that this reading has allocated and not freed: for values, nodes, inputs,
  /// their names, pending links, kept diagnostics, paths of skipped buffers, and the token that is
  /// being read. Strings and buffers count as their size in bytes. The rest is estimated, so the
  /// process may allocate about two and a half times the limit for a text of many small objects.
  ///
  /// If `memory` is not set, the limit is 64 MiB, plus 100 bytes for each byte of the text, plus
  /// what compressed buffers expand to. A text whose buffers contain as many numbers as they
  /// declare needs less memory than that. All buffers of the text together, including replaced
  /// ones, may then use at most seven eighths of the limit, because clearing the memory of each
  /// takes time.
  std::optional<std::uint64_t> memory = std::nullopt;
  /// Bytes of the elements of one buffer.
  std::uint64_t bufferBytes = UNLIMITED;
  /// Nodes that the text creates, including those it removes.
  std::uint64_t nodes = UNLIMITED;
  /// Array elements that the text creates.
  std::uint64_t elements = UNLIMITED;
  /// Inputs on one path: 1 for "lamp.power", 3 for "mesh.sets[0].name". The library's scene also
  /// has its own limit, see zn::korvo_sdk::Scene::setDepthLimit.
  std::uint64_t depth = UNLIMITED;
  /// Diagnostics that the text causes, kept or not.
  std::uint64_t diagnostics = UNLIMITED;
};

/// The progress of a reading.
struct ReadProgress {
  /// Bytes of the text that the reader has requested.
  std::uint64_t bytesRead = 0;
  /// Bytes of the text, without a byte order mark; not set if the size is not known before the end.
  std::optional<std::uint64_t> bytesTotal;
  /// The number of resolved links, and of all links. Both 0 until the whole text has been read.
  std::uint64_t linksResolved = 0;
  std::uint64_t linksTotal = 0;
};

/// Whether buffer literals are converted.
enum class BufferMode : std::uint8_t {
  Read,
  /// Buffers are not allocated. Each input gets an empty buffer of its element type, and
  /// ReadOutcome::skippedBuffers describes the literal in the text. See loadBuffer.
  Skip,
};

/// Options of one reading. The callbacks run on the thread that reads. An exception of a callback
/// ends the reading with ReadStatus::HostException.
struct ReadOptions {
  ReadLimits limits;
  /// Called at the beginning, then at most every 5 milliseconds, also while a long list of numbers
  /// is converted, a compressed buffer or a long string is expanded, or links are resolved. Called
  /// once more when the reading is complete, with all bytes read and all links resolved. Returning
  /// false ends the reading with ReadStatus::Cancelled; the result of the last call is ignored.
  std::function<bool(const ReadProgress&)> onProgress;
  /// Called with each diagnostic as it is found, kept or not, in the order of the log.
  std::function<void(const Diagnostic&)> onDiagnostic;
  /// The maximum number of diagnostics that the outcome keeps, and of their bytes. The first
  /// diagnostic that exceeds a maximum, and all later ones, are only counted. The diagnostic that
  /// ended the reading is always kept. Without `onDiagnostic`, the text of a diagnostic that is
  /// only counted is not created.
  std::uint64_t keptDiagnostics = 10000;
  std::uint64_t keptDiagnosticBytes = std::uint64_t{64} << 20;
  /// Keeps the comments, version and time of the scene. Otherwise they are reset before the text is
  /// read, to no comments, version 1 and no time.
  bool keepHeader = false;
  BufferMode buffers = BufferMode::Read;
  /// The nodes to keep: those with a name in the first list or a type in the second. If both lists
  /// are empty, all nodes are kept. Names and types are compared exactly. The statements of the
  /// other nodes are checked, with the same diagnostics, and have no effect; a link from a kept
  /// node to another node is cleared. A node that already exists in the scene and is not in the
  /// lists does not change; statements for it are checked as for a new node of its name and type.
  /// The limit of empty elements applies to the kept nodes and to the others separately.
  std::vector<std::string> wantedNames;
  std::vector<std::string> wantedTypes;
};

}  // namespace vsa
