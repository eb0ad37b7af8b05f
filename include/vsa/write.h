// Writing a scene as a VSA text: to a file, into a string, or to a sink of the host.
//
//   const vsa::WriteResult result = vsa::writeFile(scene, "scene.vsa");
//   if (!result.isWritten()) std::puts(result.message.c_str());
//
// Reading the text gives the same scene: nodes, types, inputs, their order, every bit of every
// value and buffer, links and header. What a text cannot carry, such as a name that is no
// identifier, is found before anything is written. None of these functions throws, and none prints.
// The scene must not change during the call.
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

/// Where a text goes, if it is neither a file nor a string. The host owns it.
class VSA_API Sink {
 public:
  virtual ~Sink() = default;
  /// Takes the next part of the text, at most about 64 KiB, valid during the call. Returning false
  /// ends the writing with WriteStatus::Unwritable; an exception ends it with HostException.
  virtual bool write(std::string_view text) = 0;
  /// Why a write failed, as a message for people.
  virtual std::string error() const { return {}; }
};

/// Something in the scene that a text cannot carry.
struct WriteProblem {
  /// The name of the node; empty if the problem is in the header.
  std::string node;
  /// The path of the input below the node, such as ".keys[2].time"; empty for the node itself.
  std::string input;
  /// Why a text cannot carry it, as a message for people.
  std::string reason;
  /// Whether a lossy text has a value in its place; otherwise it has nothing of it, and nothing of
  /// what is inside it.
  bool isReplaced = false;
};

enum class WriteStatus : std::uint8_t {
  /// The text was written; if WriteOptions::lossy, without what `problems` lists.
  Written,
  /// The scene has something that a text cannot carry. Nothing was written.
  NotCarried,
  /// The file or the sink did not take the text. A file that was there is unchanged.
  Unwritable,
  /// There was no memory. A file that was there is unchanged.
  OutOfMemory,
  /// The sink threw an exception.
  HostException,
};

/// How a writing ended.
struct [[nodiscard]] WriteResult {
  WriteStatus status = WriteStatus::Written;
  /// Why there is no text, for people. Empty if `status` is Written, and where there is no memory
  /// for it.
  std::string message;
  /// What the text cannot carry, in the order of the scene; the first
  /// WriteOptions::keptProblems of them.
  std::vector<WriteProblem> problems;
  /// How many there are, kept or not.
  std::uint64_t problemCount = 0;
  /// Bytes of the text that were handed to the file, the string or the sink.
  std::uint64_t bytesWritten = 0;
  /// What the sink threw, if `status` is HostException.
  std::exception_ptr exception;

  bool isWritten() const noexcept { return status == WriteStatus::Written; }
};

/// The same, with the text.
struct [[nodiscard]] TextResult : WriteResult {
  /// Empty unless `status` is Written.
  std::string text;
};

/// Writes the file at `path`. The text goes to a new file in the same folder, which replaces `path`
/// when it is complete and on the disk, and has the permissions of the file that it replaces. So
/// there is the old file or the new one at any time, and never a part of one. A symbolic link
/// stays, and the file that it names is replaced. A pipe or a device is written to as it is.
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
