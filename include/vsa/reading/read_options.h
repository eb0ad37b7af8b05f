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

/// The value of a limit that bounds nothing.
inline constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();

/// Upper bounds of one reading. A text may have exactly as much as a limit says. With more, the
/// reading ends with ReadStatus::OverLimit and a diagnostic, before the library takes the memory
/// for it. Only a buffer that is too large is left out, and the reading goes on: there is a
/// diagnostic OverLimit that names the input, the declared count and what was written, the input
/// gets its element type and stays empty, and the status at the end is OverLimit. A limit of 0
/// allows nothing.
struct ReadLimits {
  /// Bytes of the text, without a byte order mark. If the size is known before and too large, the
  /// text is not read at all.
  std::uint64_t textBytes = UNLIMITED;
  /// Bytes of memory that this reading has taken and still needs: for values, nodes, inputs, their
  /// names, pending links, kept diagnostics, paths of skipped buffers, and the token that is being
  /// read. Strings and buffers count with their bytes. The rest is estimated, so that the process
  /// may take some two and a half times the limit for a text of many small objects.
  ///
  /// If it is not set, the limit is 64 MiB, plus 100 bytes for each byte of the text, plus what
  /// compressed buffers expand to. A text that writes what it declares stays below that. The
  /// buffers of the text in all, replaced ones included, may then take seven eighths of it: each
  /// takes the time to clear its memory.
  std::optional<std::uint64_t> memory = std::nullopt;
  /// Bytes of the elements of one buffer.
  std::uint64_t bufferBytes = UNLIMITED;
  /// Nodes that the text makes, removed ones included.
  std::uint64_t nodes = UNLIMITED;
  /// Array elements that the text makes.
  std::uint64_t elements = UNLIMITED;
  /// Inputs on one path: 1 for "lamp.power", 3 for "mesh.sets[0].name". The library's scene has a
  /// limit of its own besides, see zn::korvo_sdk::Scene::setDepthLimit.
  std::uint64_t depth = UNLIMITED;
  /// Diagnostics that the text causes, kept or not.
  std::uint64_t diagnostics = UNLIMITED;
};

/// How far a reading is.
struct ReadProgress {
  /// Bytes of the text that the reader has asked for.
  std::uint64_t bytesRead = 0;
  /// Bytes of the text, without a byte order mark; not set if that is not known before its end.
  std::optional<std::uint64_t> bytesTotal;
  /// Links that are resolved, and links in all. Both 0 until the whole text has been read.
  std::uint64_t linksResolved = 0;
  std::uint64_t linksTotal = 0;
};

/// Whether buffer literals are converted.
enum class BufferMode : std::uint8_t {
  Read,
  /// No buffer takes memory. The input gets its element type and stays empty, and
  /// ReadOutcome::skippedBuffers says what the text has for it. See loadBuffer.
  Skip,
};

/// Options of one reading. The callbacks run on the thread that reads. What they throw ends the
/// reading with ReadStatus::HostException.
struct ReadOptions {
  ReadLimits limits;
  /// Called at the beginning, then at most every 5 milliseconds, also while a long list of numbers
  /// is converted, a compressed buffer or a long string is expanded, and links are resolved, and
  /// once more when the reading is complete: with all bytes read and all links resolved. Returning
  /// false ends the reading with ReadStatus::Cancelled; what the last call returns is not used.
  std::function<bool(const ReadProgress&)> onProgress;
  /// Called with each diagnostic as it is found, kept or not, in the order of the log.
  std::function<void(const Diagnostic&)> onDiagnostic;
  /// How many diagnostics the outcome keeps, and how many bytes they may take. The first one that
  /// is too much and all after it are counted only, but the one that ended the reading is always
  /// kept. Without `onDiagnostic`, those that are counted only cost no time for their texts.
  std::uint64_t keptDiagnostics = 10000;
  std::uint64_t keptDiagnosticBytes = std::uint64_t{64} << 20;
  /// Keeps comments, version and time that the scene has. Otherwise they are reset before the text
  /// is read: no comments, version 1, no time.
  bool keepHeader = false;
  BufferMode buffers = BufferMode::Read;
  /// The nodes to keep: those with a name in the first list or a type in the second. If both lists
  /// are empty, all. Names and types are compared exactly. The statements of the other nodes are
  /// checked, with the same diagnostics, and change nothing; a link from a kept node to one of the
  /// others is set to none. A node that the scene has already and that is not in the lists stays as
  /// it is; statements for it are checked as for a new node of its name and type. The limit of
  /// empty elements applies to the kept nodes and to the others separately.
  std::vector<std::string> wantedNames;
  std::vector<std::string> wantedTypes;
};

}  // namespace vsa
