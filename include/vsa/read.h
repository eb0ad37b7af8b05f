// Reading a VSA text: from a file, from memory, or from a source of the host.
//
//   const vsa::ReadResult result = vsa::readFile("scene.vsa");
//   if (!result.isComplete()) {
//     for (const vsa::Diagnostic& found : result.diagnostics) std::puts(found.logLine().c_str());
//   }
//
// None of these functions throws, and none prints. Every failure is part of the result, and so is
// every exception of the host's own scene, source or callback. Each call has its own options; calls
// on different scenes may run on different threads at the same time. Callbacks may inspect the
// scene into which the text is read, and must not change it. If a callback starts a second reading
// into this scene, that reading is Unreadable and changes nothing. A host's scene, source or
// callback may read or parse texts into other scenes: each reading has its own limits and
// diagnostics.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/reading/read_diagnostic.h>
#include <vsa/reading/read_options.h>
#include <vsa/reading/read_status.h>
#include <vsa/reading/text_position.h>
#include <vsa/scene.h>
#include <vsa/scene/data_type.h>
#include <vsa/scene/scene_interface.h>
#include <vsa/values/buffer_view.h>

namespace vsa {

/// A source of a text that is neither a file nor in memory: an archive, a socket, a decoder. The
/// host owns it. An exception of its functions ends the reading with ReadStatus::HostException.
class VSA_API Source {
 public:
  virtual ~Source() = default;
  /// Writes up to `to.size()` bytes, 1 or more, and returns how many; 0 at the end and when a read
  /// fails. A larger result counts as `to.size()`.
  virtual std::size_t read(std::span<char> to) = 0;
  /// The number of bytes from the current position to the end, if it is known before the end is
  /// reached. 0 also means unknown.
  virtual std::optional<std::uint64_t> size() const { return std::nullopt; }
  /// Why a read failed, as a message for people; empty if none has failed.
  virtual std::string error() const { return {}; }
};

/// A buffer literal of a text that was not converted, see BufferMode::Skip.
struct SkippedBuffer {
  /// The input to which the text assigns it, such as "worktop.points".
  std::string inputPath;
  /// The type of one element.
  zn::korvo_sdk::DataType type = zn::korvo_sdk::DataType::Null;
  /// The number of elements that the text declares.
  std::uint64_t count = 0;
  /// The literal, from its keyword up to its closing brace.
  TextRange literal;
};

/// What a reading applied to the scene.
struct AppliedCounts {
  /// The number of statements and comments that the parser began; the last one may have failed.
  std::uint64_t statements = 0;
  /// Nodes that were created, kept or not.
  std::uint64_t nodes = 0;
  /// Array elements that were created.
  std::uint64_t elements = 0;
  /// Values that were assigned to inputs of kept nodes.
  std::uint64_t values = 0;
  /// References and connections that were resolved, `null` included. 0 unless `linksResolved`.
  std::uint64_t links = 0;
  /// Whether the whole text was read and its links were resolved, although some of them may have
  /// failed.
  bool linksResolved = false;
};

/// How a reading ended and what it found.
struct [[nodiscard]] ReadOutcome {
  ReadStatus status = ReadStatus::Complete;
  /// The limit that the text exceeded; set if and only if `status` is OverLimit.
  std::optional<Limit> limit;
  /// Why the reading ended, as a message for people. Empty if `status` is Complete, or if there is
  /// no memory for the message.
  std::string message;
  /// The diagnostics that were found, statement by statement, and sorted by position within a
  /// statement. Links come last, in no particular order. See ReadOptions::keptDiagnostics.
  std::vector<Diagnostic> diagnostics;
  /// Diagnostics that were found and not kept.
  std::uint64_t droppedDiagnostics = 0;
  /// Errors and warnings that were found, kept or not.
  std::uint64_t errorCount = 0;
  std::uint64_t warningCount = 0;
  /// Bytes of the text that were read. The reader looks ahead by up to three tokens.
  std::uint64_t bytesRead = 0;
  AppliedCounts applied;
  /// One record for each buffer literal that was assigned to an input, in the order of the text;
  /// empty unless BufferMode::Skip.
  std::vector<SkippedBuffer> skippedBuffers;
  /// The exception of the host's scene, source or callback, if `status` is HostException. If
  /// `status` is OutOfMemory, the std::bad_alloc that the library or the host threw. An exception
  /// of a scene while a text is read is also a diagnostic, HostError, whose range is the statement.
  std::exception_ptr exception;

  bool isComplete() const noexcept { return status == ReadStatus::Complete; }
};

/// A ReadOutcome with the scene that was read. Movable, not copyable.
struct [[nodiscard]] ReadResult : ReadOutcome {
  /// The scene, with everything that was applied, whatever the status is.
  Scene scene;
};

/// Reads the file at `path` into a new scene. A byte order mark at its beginning is skipped. A pipe
/// or device is read as its bytes arrive. The status is Unreadable for a null path, a path with a
/// NUL in it, a missing file and a directory.
VSA_API ReadResult readFile(const std::filesystem::path& path,
                            const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readFile(const char* path, const ReadOptions& options = {}) noexcept;

/// Reads the bytes of a text into a new scene. They need no NUL at the end and may be empty. They
/// must not change during the call, and may be freed after it. A `const char*` is a text that ends
/// at its NUL, never a path; for a null one the status is Unreadable.
VSA_API ReadResult readText(std::string_view text, const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readText(std::span<const std::byte> text,
                            const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readText(const char* text, const ReadOptions& options = {}) noexcept;

/// Reads a source, from its current position to its end, into a new scene.
VSA_API ReadResult readSource(Source& source, const ReadOptions& options = {}) noexcept;

/// A buffer literal that was read later.
struct [[nodiscard]] LoadedBuffer : ReadOutcome {
  /// Holds the buffer, as the input "b" of its only node, "b". See `buffer`.
  Scene scene;

  /// The buffer. Valid as long as this object exists and its scene is not changed. It has no
  /// elements unless the status is Complete.
  VSA_API BufferView buffer() const noexcept;
};

/// Reads the literal of a skipped buffer from the same file or text. Diagnostics have the positions
/// and the path that they have in the whole text. Limits, counts and progress concern the literal
/// alone. The status is Unreadable if the file cannot be read, if the path or text is null, or if
/// there is no longer a literal of the same type and count at that place; it may also be the status
/// of the text at that place. Changed numbers are not detected.
VSA_API LoadedBuffer loadBuffer(const std::filesystem::path& path, const SkippedBuffer& skipped,
                                const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBuffer(const char* path, const SkippedBuffer& skipped,
                                const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBufferFromText(std::string_view text, const SkippedBuffer& skipped,
                                        const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBufferFromText(const char* text, const SkippedBuffer& skipped,
                                        const ReadOptions& options = {}) noexcept;

// The same functions for an existing scene. They add nodes to the scene. The scene is the library's
// own or a host's. An unreadable file or null text changes nothing in it.

VSA_API ReadOutcome readFileInto(Scene& scene, const std::filesystem::path& path,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readFileInto(Scene& scene, const char* path,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readFileInto(zn::korvo_sdk::interfaces::IScene& scene,
                                 const std::filesystem::path& path,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readFileInto(zn::korvo_sdk::interfaces::IScene& scene, const char* path,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(Scene& scene, std::string_view text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(Scene& scene, std::span<const std::byte> text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(Scene& scene, const char* text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(zn::korvo_sdk::interfaces::IScene& scene, std::string_view text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(zn::korvo_sdk::interfaces::IScene& scene,
                                 std::span<const std::byte> text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readTextInto(zn::korvo_sdk::interfaces::IScene& scene, const char* text,
                                 const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readSourceInto(Scene& scene, Source& source,
                                   const ReadOptions& options = {}) noexcept;
VSA_API ReadOutcome readSourceInto(zn::korvo_sdk::interfaces::IScene& scene, Source& source,
                                   const ReadOptions& options = {}) noexcept;

}  // namespace vsa
