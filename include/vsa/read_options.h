// What a reading is asked for: limits, callbacks, and what is kept. Options are per call; nothing
// in the process changes.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <vsa/read_diagnostic.h>

namespace vsa {

/// The value of a limit that bounds nothing.
inline constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();

/// Upper bounds of one reading. Going past one ends the reading with ReadStatus::OverLimit and a
/// diagnostic, before the memory in question is taken. A limit of 0 allows nothing.
struct ReadLimits {
  /// Bytes of the text. A text whose size is known and too large is not read at all.
  std::uint64_t textBytes = UNLIMITED;
  /// Bytes of memory in all: of nodes, inputs, values, pending links and kept diagnostics, as far
  /// as this reading has taken them and still needs them. Estimated for everything but values. Not
  /// set: 64 MiB, plus 100 times the size of the text, plus what the compressed buffers of the text
  /// may expand to. So only a text that declares much more than it writes meets it.
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
  /// Bytes of the text; not set if that is not known before its end.
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
  /// Called at the beginning, then at most every 5 milliseconds, also while links are resolved, and
  /// once more when the reading is complete: with all bytes read and all links resolved. Returning
  /// false ends the reading with ReadStatus::Cancelled; what the last call returns is not used.
  std::function<bool(const ReadProgress&)> onProgress;
  /// Called with each diagnostic as it is found, kept or not, in the order of the log.
  std::function<void(const Diagnostic&)> onDiagnostic;
  /// How many diagnostics the outcome keeps, and how many bytes they may take. Those beyond are
  /// counted only, but the one that ended the reading is always kept.
  std::uint64_t keptDiagnostics = 10000;
  std::uint64_t keptDiagnosticBytes = std::uint64_t{64} << 20;
  /// Keeps comments, version and time that the scene has. Otherwise they are reset before the text
  /// is read: no comments, version 1, no time.
  bool keepHeader = false;
  BufferMode buffers = BufferMode::Read;
  /// The nodes to keep: those with a name in the first list or a type in the second. If both lists
  /// are empty, all. Names and types are compared exactly. The other nodes are checked, with the
  /// same diagnostics, and not kept; a link from a kept node to one of them becomes none. A node
  /// that the scene has already and that is not in the lists stays as it is.
  std::vector<std::string> wantedNames;
  std::vector<std::string> wantedTypes;
};

}  // namespace vsa
