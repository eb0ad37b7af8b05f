// Writing a scene as a VSA text: to a file, into a string, or to a sink of the host.
//
//   const vsa::WriteResult result = vsa::writeFile(scene, "scene.vsa");
//   if (!result.isWritten()) std::puts(result.message.c_str());
//
// Reading the text gives the same scene: nodes, types, inputs, their order, every bit of every
// value and buffer, links and header. The functions check the whole scene before they write: a text
// cannot represent everything, for instance a name that is not an identifier. The functions do not
// throw or print. The scene must not change during the call.
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

/// A destination for a text that is neither a file nor a string. The host owns it.
class VSA_API Sink {
 public:
  virtual ~Sink() = default;
  /// Receives the next part of the text, about 64 KiB at most, which is valid during the call. If
  /// it returns false, the writing ends with WriteStatus::Unwritable; if it throws, with
  /// HostException.
  virtual bool write(std::string_view text) = 0;
  /// Why a write failed, as a message for people.
  virtual std::string error() const { return {}; }
};

/// Something in the scene that a text cannot represent.
struct WriteProblem {
  /// The name of the node; empty if the problem is in the header.
  std::string node;
  /// The path of the input below the node, such as ".keys[2].time"; empty for the node itself.
  std::string input;
  /// Why a text cannot represent it, as a message for people.
  std::string reason;
  /// Whether a lossy text contains another value instead. If not, the text leaves out the node or
  /// input, with everything inside it.
  bool isReplaced = false;
};

/// How a call of a writing function ended.
enum class WriteStatus : std::uint8_t {
  /// The text was written. With WriteOptions::lossy, `problems` lists what was left out.
  Written,
  /// The scene contains something that a text cannot represent. Nothing was written.
  NotCarried,
  /// The file could not be written, or the sink returned false. An existing file is unchanged.
  Unwritable,
  /// Memory could not be allocated. An existing file is unchanged.
  OutOfMemory,
  /// The sink threw an exception.
  HostException,
};

/// The result of writing, and what the text cannot represent.
struct [[nodiscard]] WriteResult {
  WriteStatus status = WriteStatus::Written;
  /// Why there is no text, as a message for people. Empty if `status` is Written, or if there is no
  /// memory for the message.
  std::string message;
  /// What the text cannot represent, in the order of the scene; at most WriteOptions::keptProblems.
  std::vector<WriteProblem> problems;
  /// The number of all problems, kept or not.
  std::uint64_t problemCount = 0;
  /// Bytes of the text that were passed to the file, the string or the sink.
  std::uint64_t bytesWritten = 0;
  /// What the sink threw, if `status` is HostException.
  std::exception_ptr exception;

  bool isWritten() const noexcept { return status == WriteStatus::Written; }
};

/// A WriteResult with the text.
struct [[nodiscard]] TextResult : WriteResult {
  /// The text; empty unless `status` is Written.
  std::string text;
};

/// Writes the file at `path`. The text is written to a new file in the same folder. The new file
/// gets the permissions of the old file, and replaces it when it is complete and on the disk. So
/// `path` is the complete old file or the complete new file at any time. If `path` is a symbolic
/// link, the file that it refers to is replaced. If it is a pipe or a device, the text is written
/// to it directly. The status is Unwritable for a path with a NUL in it, for a folder, and for a
/// path in a folder that does not exist.
VSA_API WriteResult writeFile(const zn::korvo_sdk::Scene& scene, const std::filesystem::path& path,
                              const WriteOptions& options = {}) noexcept;
VSA_API WriteResult writeFile(const Scene& scene, const std::filesystem::path& path,
                              const WriteOptions& options = {}) noexcept;

/// Writes the text into a string.
VSA_API TextResult writeText(const zn::korvo_sdk::Scene& scene,
                             const WriteOptions& options = {}) noexcept;
VSA_API TextResult writeText(const Scene& scene, const WriteOptions& options = {}) noexcept;

/// Writes the text to `sink`, part by part. Needs less than 8 MiB of memory, however large the
/// scene is.
VSA_API WriteResult writeTo(const zn::korvo_sdk::Scene& scene, Sink& sink,
                            const WriteOptions& options = {}) noexcept;
VSA_API WriteResult writeTo(const Scene& scene, Sink& sink,
                            const WriteOptions& options = {}) noexcept;

}  // namespace vsa
