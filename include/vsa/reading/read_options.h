// The options of a reading: limits, callbacks, and the parts of the text to keep. Each call has its
// own options.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <vsa/reading/read_diagnostic.h>

namespace vsa {

/// The value of a limit that is never exceeded.
inline constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();

/// The limits of one reading. A limit is the largest value that is allowed: 0 allows nothing. If a
/// text exceeds a limit, the reading ends with ReadStatus::OverLimit and a diagnostic. It ends
/// before the library allocates memory for the part of the text that exceeds the limit. There is
/// one exception: a buffer that is too large does not end the reading. Its input gets an empty
/// buffer of the element type, and the status at the end is OverLimit unless the reading ends for
/// another reason. The message of its diagnostic contains the path of the input (at most its first
/// 200 bytes), the declared count, and how many numbers or bytes of compressed text the list of the
/// buffer contains.
struct ReadLimits {
  /// Bytes of the text, without a byte order mark. If the size is known in advance and exceeds the
  /// limit, nothing is read.
  std::uint64_t textBytes = UNLIMITED;
  /// Bytes of memory that this reading has allocated and not freed. They include values, nodes,
  /// inputs and their names, pending links, kept diagnostics, paths of skipped buffers, and the
  /// current token. Strings and buffers count with their size in bytes. The size of other objects
  /// is estimated. When an input gets another value, the bytes of its old value are subtracted only
  /// if the scene is one of the library, and if the new value is a buffer or a string of at least
  /// 256 bytes in the text. For a text of many small objects, the process may therefore allocate
  /// some 2.5 times the limit.
  ///
  /// If `memory` is not set, the limit is 64 MiB, plus 100 bytes for each byte of the text, plus
  /// the expanded size of compressed buffers. This is enough for every text whose buffers contain
  /// as many numbers as they declare.
  ///
  /// A second rule applies to this default limit only: all buffers of the text together may use at
  /// most seven eighths of it. The last eighth is for other objects, so that the reading can
  /// continue after a buffer that is too large. For this rule, a buffer counts even after the text
  /// has replaced it. Otherwise a text could replace a large buffer many times, and each time the
  /// reader would need time to set the memory of the new buffer to zero.
  std::optional<std::uint64_t> memory = std::nullopt;
  /// Bytes of the elements of one buffer.
  std::uint64_t bufferBytes = UNLIMITED;
  /// Nodes that the text creates, including nodes that it removes.
  std::uint64_t nodes = UNLIMITED;
  /// Array elements that the text creates.
  std::uint64_t elements = UNLIMITED;
  /// Inputs on one path: 1 for "lamp.power", 3 for "mesh.sets[0].name". A scene of the library and
  /// a HostScene also have a limit of their own: see zn::korvo_sdk::Scene::setDepthLimit and
  /// HostScene::depthLimit. By default it is 256.
  std::uint64_t depth = UNLIMITED;
  /// Diagnostics of the text, including those that are not kept.
  std::uint64_t diagnostics = UNLIMITED;
};

/// The progress of a reading.
struct ReadProgress {
  /// Bytes of the text that the reader has received. The lexer may not have processed the last of
  /// them.
  std::uint64_t bytesRead = 0;
  /// Bytes of the text, without a byte order mark. It is not set if the size of the text is 0 or
  /// not known. There is one exception: in the last call of a complete reading, it is always set
  /// and equals `bytesRead`.
  std::optional<std::uint64_t> bytesTotal;
  /// The number of links that were resolved. It is 0 until the whole text has been read.
  std::uint64_t linksResolved = 0;
  /// The number of all links. It is 0 until the whole text has been read.
  std::uint64_t linksTotal = 0;
};

/// What the reader does with buffer literals.
enum class BufferMode : std::uint8_t {
  /// Converts them to buffers.
  Read,
  /// Checks their keywords and element counts, but not their numbers, and allocates no memory for
  /// the elements. Each input gets an empty buffer with the type of the elements. The list of a
  /// literal is in memory while it is the current token, and ReadLimits::memory applies to it.
  /// ReadOutcome::skippedBuffers contains the range of each literal of a kept node. loadBuffer
  /// reads a literal later.
  Skip,
};

/// The options of one reading. Callbacks run on the thread that reads. If a callback throws an
/// exception, the reading ends with ReadStatus::HostException, or with OutOfMemory for a
/// std::bad_alloc.
struct ReadOptions {
  /// The limits of the reading.
  ReadLimits limits;
  /// Called with the progress of the reading. The first call is before the text is read, unless the
  /// reading ends before that. Further calls follow at least 5 milliseconds after one another, also
  /// while a long list is converted, a long string or compressed buffer is expanded, or links are
  /// resolved. If the function returns false, the reading ends with ReadStatus::Cancelled. A
  /// complete reading makes one last call, with all bytes read and all links resolved. This call
  /// may follow sooner, and its result is ignored.
  std::function<bool(const ReadProgress&)> onProgress;
  /// Called with each diagnostic when it is found, in the order of the log. It is also called for
  /// diagnostics that are not kept.
  std::function<void(const Diagnostic&)> onDiagnostic;
  /// Called before the library creates a diagnostic. If it returns false, the diagnostic is only
  /// counted: `onDiagnostic` is not called, and the outcome does not keep the diagnostic. The texts
  /// of a diagnostic may contain a path of any length, and take time in proportion to it. If it
  /// returns true, it may be called again for the same diagnostic. It is not called for a
  /// diagnostic that ends the reading, for the first buffer that is too large, for an EndMark, and
  /// for a HostMessage: these are always created.
  std::function<bool(DiagnosticId)> wantsDiagnostic;
  /// The maximum number of diagnostics that the outcome keeps. A diagnostic that exceeds this
  /// maximum or `keptDiagnosticBytes` is only counted, and so are all diagnostics after it. The
  /// diagnostic that ended the reading is always kept. If `onDiagnostic` is not set, the library
  /// does not create the texts of the diagnostics after the first one that is only counted.
  std::uint64_t keptDiagnostics = 10000;
  /// The maximum size in bytes of the diagnostics that the outcome keeps.
  std::uint64_t keptDiagnosticBytes = std::uint64_t{64} << 20;
  /// Whether to keep the comments, the version and the time that the scene has before the reading.
  /// If false, they are reset before the text is read: no comments, version 1 and no time.
  bool keepHeader = false;
  /// What the reader does with buffer literals.
  BufferMode buffers = BufferMode::Read;
  /// The names and the types of the nodes to keep. A node is kept if its name is in `wantedNames`
  /// or its type is in `wantedTypes`. Letter case matters. All other nodes are dropped: their
  /// statements are checked with the same diagnostics, and have no effect. There is one exception:
  /// if both lists are empty, all nodes are kept.
  ///
  /// A link from a kept node to a dropped node is removed. If the scene already has a node that the
  /// lists do not select, the node does not change. Statements for it are checked as for a new node
  /// with its name and type. The limit of empty elements applies to kept nodes and to dropped nodes
  /// separately. If the scene is one of a host, dropped nodes are checked as in a new scene of the
  /// library, with the default limits of that scene. Their diagnostics can then differ from those
  /// that the host's scene would cause.
  std::vector<std::string> wantedNames;
  std::vector<std::string> wantedTypes;
};

}  // namespace vsa
