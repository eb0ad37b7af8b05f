// Reads a VSA text from a file, from memory, or from a source of the host.
//
//   const vsa::ReadResult result = vsa::readFile("scene.vsa");
//   if (!result.isComplete()) {
//     for (const vsa::Diagnostic& found : result.diagnostics) std::puts(found.logLine().c_str());
//   }
//
// None of these functions throws or prints. The result reports each failure, and each exception of
// the host's scene, source or callback.
//
// Each call has its own options, limits and diagnostics. Several threads may read into different
// scenes at the same time.
//
// A callback may inspect the scene into which the text is read. It must not change that scene. If
// it starts a second reading into that scene, the second reading is Unreadable and changes nothing.
// Callbacks, sources and scenes of a host may read texts into other scenes.
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

/// A source of a text that is neither a file nor in memory, such as an archive, a socket or the
/// output of a decompressor. The host owns the object. If one of its functions throws an exception,
/// the reading ends with ReadStatus::HostException, or with OutOfMemory for a std::bad_alloc; a
/// SyntaxReader passes the exception on. A byte order mark is not skipped: its bytes are letters of
/// the first word.
class VSA_API Source {
 public:
  virtual ~Source() = default;
  /// Writes bytes of the text to `to` and returns their number. `to` has room for at least 1 byte.
  /// Returns 0 at the end of the text and if a read fails, and may be called again after that. A
  /// result greater than `to.size()` counts as `to.size()`.
  virtual std::size_t read(std::span<char> to) = 0;
  /// The number of bytes from the current position to the end. 0 and std::nullopt mean that the
  /// number is not known.
  virtual std::optional<std::uint64_t> size() const { return std::nullopt; }
  /// The reason why a read failed, as a message for people. It is empty if no read has failed.
  virtual std::string error() const { return {}; }
};

/// A buffer literal that the reading did not convert. See BufferMode::Skip.
struct SkippedBuffer {
  /// The path of the input to which the text assigns the buffer, such as "worktop.points".
  std::string inputPath;
  /// The type of one element.
  zn::korvo_sdk::DataType type = zn::korvo_sdk::DataType::Null;
  /// The number of elements that the text declares.
  std::uint64_t count = 0;
  /// The range of the literal in the text, from its keyword to its closing brace inclusive.
  TextRange literal;
};

/// What a reading did: how many statements it began, and how many objects it created or changed in
/// the scene.
struct AppliedCounts {
  /// The number of statements and comments that the parser began. The last one may have failed.
  std::uint64_t statements = 0;
  /// The number of nodes that were created, including nodes that were dropped (see
  /// ReadOptions::wantedNames) and nodes for which HostScene::makeNode returned null.
  std::uint64_t nodes = 0;
  /// The number of array elements that were created, or whose creation failed.
  std::uint64_t elements = 0;
  /// The number of values that were assigned to inputs of kept nodes.
  std::uint64_t values = 0;
  /// The number of references and connections that the reader tried to resolve. It includes links
  /// to no node (`null`), links of dropped nodes, and links to nodes or outputs that do not exist.
  /// If several statements set the reference or the connection of one input, only the last counts.
  /// It is 0 if `linksResolved` is false.
  std::uint64_t links = 0;
  /// Whether the reader has read the text to its end and tried to resolve each of its links. If a
  /// read fails, the text ends there: the result can then be true, although the status is
  /// Unreadable. Links to nodes or outputs that do not exist were not made.
  bool linksResolved = false;
};

/// The result of a reading: how it ended, and what it found.
struct [[nodiscard]] ReadOutcome {
  /// How the reading ended.
  ReadStatus status = ReadStatus::Complete;
  /// The limit that the text exceeded. It is set if and only if `status` is OverLimit.
  std::optional<Limit> limit;
  /// The reason why the reading ended, as a message for people. It is empty if `status` is
  /// Complete, if there is no memory for it, and if the text of the exception is empty.
  std::string message;
  /// The diagnostics that were kept, in the order of their statements. Within a statement they are
  /// sorted by position. Diagnostics about links follow, in no particular order. A diagnostic about
  /// a text that is cut off is the last. See ReadOptions::keptDiagnostics.
  std::vector<Diagnostic> diagnostics;
  /// The number of diagnostics that were found and not kept.
  std::uint64_t droppedDiagnostics = 0;
  /// The number of errors that were found, kept or not.
  std::uint64_t errorCount = 0;
  /// The number of warnings that were found, kept or not.
  std::uint64_t warningCount = 0;
  /// The number of bytes of the text that the lexer has consumed. It includes the lookahead: up to
  /// three tokens that the parser has not consumed.
  std::uint64_t bytesRead = 0;
  /// What the reading applied to the scene.
  AppliedCounts applied;
  /// One record for each buffer literal that was assigned to an input of a kept node, in the order
  /// of the text. It is empty if the mode is not BufferMode::Skip.
  std::vector<SkippedBuffer> skippedBuffers;
  /// The exception of the host's scene, source or callback, if `status` is HostException. If
  /// `status` is OutOfMemory, it is a std::bad_alloc. An exception other than std::bad_alloc that a
  /// scene throws also causes a diagnostic, HostError. The range of this diagnostic is the
  /// statement, or the statement of the link that is resolved. While inputs are released, the range
  /// is the end of the text. While the header is reset, it is the beginning of the text.
  std::exception_ptr exception;

  /// Whether the whole text was read and its links were resolved.
  bool isComplete() const noexcept { return status == ReadStatus::Complete; }
};

/// The outcome of a reading and the new scene. Objects can be moved, but not copied.
struct [[nodiscard]] ReadResult : ReadOutcome {
  /// The scene. After a failed reading, it contains everything that was applied before the failure.
  Scene scene;
};

/// Reads the file at `path` into a new scene. A byte order mark at the beginning of the file is
/// skipped. The bytes of a pipe or device are read when they arrive. The status is Unreadable if
/// the file cannot be opened or read, for example because it does not exist or is a directory, and
/// if the path is null or contains a NUL.
VSA_API ReadResult readFile(const std::filesystem::path& path,
                            const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readFile(const char* path, const ReadOptions& options = {}) noexcept;

/// Reads a text in memory into a new scene. A byte order mark is not skipped: its bytes are letters
/// of the first word. The text may be empty and needs no NUL at its end. Its bytes must not change
/// during the call. A `const char*` is a text that ends at its NUL, never a path. If it is null,
/// the status is Unreadable.
VSA_API ReadResult readText(std::string_view text, const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readText(std::span<const std::byte> text,
                            const ReadOptions& options = {}) noexcept;
VSA_API ReadResult readText(const char* text, const ReadOptions& options = {}) noexcept;

/// Reads the text of `source` into a new scene, from the current position of the source to its end.
VSA_API ReadResult readSource(Source& source, const ReadOptions& options = {}) noexcept;

/// The result of reading a skipped buffer literal.
struct [[nodiscard]] LoadedBuffer : ReadOutcome {
  /// A scene with one node, "b". Its input "b" contains the buffer. The scene may be empty if the
  /// status is not Complete. See `buffer`.
  Scene scene;

  /// The buffer. It is valid as long as this object exists and its scene does not change. If the
  /// status is not Complete, there is no buffer, and the result is like that of a missing input.
  VSA_API BufferView buffer() const noexcept;
};

/// Reads the literal of a skipped buffer from the same file or text. The position and the input
/// path of a diagnostic are those in the whole text. Limits, counts and progress refer to the
/// literal only. The limits of nodes and depth, `buffers`, `wantedNames` and `wantedTypes` are
/// ignored. If the text is null, the status is Unreadable. Otherwise, if the literal is longer than
/// ReadLimits::textBytes, the status is OverLimit, and nothing is read. Otherwise the status is
/// Unreadable if the path is null or contains a NUL, if the file cannot be read or is not a regular
/// file, or if there is no literal of the same type and count at this position. The text at this
/// position can also cause one of the other statuses. If only the numbers in the literal have
/// changed, the function does not detect this and returns the new numbers.
VSA_API LoadedBuffer loadBuffer(const std::filesystem::path& path, const SkippedBuffer& skipped,
                                const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBuffer(const char* path, const SkippedBuffer& skipped,
                                const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBufferFromText(std::string_view text, const SkippedBuffer& skipped,
                                        const ReadOptions& options = {}) noexcept;
VSA_API LoadedBuffer loadBufferFromText(const char* text, const SkippedBuffer& skipped,
                                        const ReadOptions& options = {}) noexcept;

// The same functions for an existing scene: a scene of the library or of a host. The text can also
// change and remove nodes that the scene already has. If the file cannot be opened, if the first
// bytes of the file or source cannot be read, or if the path or text is null, the scene does not
// change.

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
