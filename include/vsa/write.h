// Writes a scene as a VSA text: to a file, into a string, or to a sink of the host.
//
//   const vsa::WriteResult result = vsa::writeFile(scene, "scene.vsa");
//   if (!result.isWritten()) std::puts(result.message.c_str());
//
// With the default options, reading the text gives the same scene: the order of nodes and inputs,
// every bit of every value and buffer, links and header. There are three exceptions. A version of 0
// may become 1. If no comment contains the version or the time, the writer adds one, which the
// scene that is read then has, too. For an empty array without an element type, the reader logs an
// error, although it creates the array: see docs/writing.md.
//
// A text cannot represent everything, for instance a name that is not an identifier. What it can
// represent in a node of a declared type depends on the declaration at the time of the call.
// Therefore the functions check the whole scene first, and write nothing if it has a problem. With
// WriteOptions::lossy they write what a text can represent, and list the problems that they meet.
// They do not throw or print. The scene must not change during the call.
#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/model/scene.h>
#include <vsa/scene.h>
#include <vsa/write_options.h>

namespace vsa {

/// Receives a text part by part. A host derives from it to write to anything else than a file or a
/// string (see writeTo). For a file, there is FileReplacement. The host owns the object.
class VSA_API Sink {
 public:
  virtual ~Sink() = default;
  /// Receives the next part of the text. A part has 1 byte to 64 KiB, and is valid during the call.
  /// If the function returns false, the writing ends with WriteStatus::Unwritable. If it throws
  /// std::bad_alloc, the writing ends with OutOfMemory, and for any other exception with
  /// HostException.
  virtual bool write(std::string_view text) = 0;
  /// The reason why a write failed, as a message for people. It is empty if there is none.
  virtual std::string error() const { return {}; }
};

/// Something in the scene that a text with these options cannot represent.
struct WriteProblem {
  /// The name of the node. It is empty if the problem is in the header.
  std::string node;
  /// The path of the input without the node, such as ".keys[2].time". It is empty if the problem is
  /// the node itself or in the header.
  std::string input;
  /// The reason why the text cannot represent it, as a message for people.
  std::string reason;
  /// Whether a lossy text (see WriteOptions::lossy) contains another value instead. If false, a
  /// lossy text leaves out this node or input and everything inside it. There is one exception: if
  /// the problem is a connection, the text leaves out only the connection. For a problem in the
  /// header it is always false: the text leaves out the invalid comment, or it has no version or
  /// time except what the valid comments of the scene contain.
  bool isReplaced = false;
};

/// How a writing function ended.
enum class WriteStatus : std::uint8_t {
  /// The text was written. If WriteOptions::lossy is set, `problems` lists what the text does not
  /// represent.
  Written,
  /// The scene contains something that a text with these options cannot represent. Nothing was
  /// written.
  NotCarried,
  /// The file could not be written, or the sink returned false. An existing file is unchanged, but
  /// a sink, pipe or device may have received a part of the text.
  Unwritable,
  /// Memory could not be allocated, or the sink threw std::bad_alloc. The rest is as for
  /// Unwritable.
  OutOfMemory,
  /// write() or error() of the sink threw an exception other than std::bad_alloc. The rest is as
  /// for Unwritable.
  HostException,
};

/// The result of a writing function, with the problems of the scene.
struct [[nodiscard]] WriteResult {
  /// How the function ended.
  WriteStatus status = WriteStatus::Written;
  /// The reason why there is no text, as a message for people. It is empty if `status` is Written
  /// or OutOfMemory. It may be empty if it is Unwritable or HostException.
  std::string message;
  /// What the text cannot represent: first in the header, then in the nodes in the order of their
  /// creation (with WriteOptions::lossy, in the order of the text). The list has at most
  /// WriteOptions::keptProblems elements.
  std::vector<WriteProblem> problems;
  /// The number of all problems that were found, including those that are not in `problems`.
  std::uint64_t problemCount = 0;
  /// The size of the text in bytes, or 0 if the sink or the new file did not take the whole text.
  /// If writeFile fails only when it replaces the old file, it is the size, although `status` is
  /// not Written.
  std::uint64_t bytesWritten = 0;
  /// The exception of the sink, if `status` is HostException; otherwise null.
  std::exception_ptr exception;

  /// Whether the text was written.
  bool isWritten() const noexcept { return status == WriteStatus::Written; }
};

/// The result of writeText.
struct [[nodiscard]] TextResult : WriteResult {
  /// The text. It is empty if `status` is not Written.
  std::string text;
};

/// Writes the text to the file at `path`. The bytes go to a new file in the same folder, with the
/// permissions of the old file. When all bytes are on the disk, the new file replaces the old file.
/// So at any time `path` is the complete old file or the complete new file. If `path` is a symbolic
/// link, the file to which the link refers is replaced. If `path` is a pipe or a device, the bytes
/// go to it directly. The status is Unwritable if `path` contains a NUL, is a folder, or is in a
/// folder that does not exist.
VSA_API WriteResult writeFile(const zn::korvo_sdk::Scene& scene, const std::filesystem::path& path,
                              const WriteOptions& options = {}) noexcept;
VSA_API WriteResult writeFile(const Scene& scene, const std::filesystem::path& path,
                              const WriteOptions& options = {}) noexcept;

/// Returns the text as a string.
VSA_API TextResult writeText(const zn::korvo_sdk::Scene& scene,
                             const WriteOptions& options = {}) noexcept;
VSA_API TextResult writeText(const Scene& scene, const WriteOptions& options = {}) noexcept;

/// Writes the text to `sink`, part by part. Needs less than 8 MiB of memory for any number of nodes
/// and inputs, plus the memory of WriteResult::problems.
VSA_API WriteResult writeTo(const zn::korvo_sdk::Scene& scene, Sink& sink,
                            const WriteOptions& options = {}) noexcept;
VSA_API WriteResult writeTo(const Scene& scene, Sink& sink,
                            const WriteOptions& options = {}) noexcept;

}  // namespace vsa
