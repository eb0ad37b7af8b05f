// Reads one file into a scene for a command that inspects scenes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// The scene of a file, as far as it could be read.
struct SceneFile {
  /// The name to show in messages: "<stdin>" for "-".
  std::string name;
  /// The result of the reading, without diagnostics: these are in `messages`. The status is
  /// Unreadable if the file cannot be opened.
  vsa::ReadResult result;
  /// The lines for standard error, escaped: the diagnostics in the order of the log, then the
  /// reason why the reading ended if no diagnostic contains it, and the result of byteLoss(). The
  /// arguments limit the number of diagnostics, and after the first line with which they would
  /// exceed 1 MiB, diagnostics are omitted, but never the one that ended the reading. The last line
  /// then says how many were omitted.
  std::string messages;
  /// The number of links that were not made, see isBrokenLink().
  std::uint64_t brokenLinks = 0;
  /// The elapsed time of the reading. 0 if the file cannot be opened.
  double seconds = 0;
  /// EXIT_READ, EXIT_NOT_READ, EXIT_USAGE (the file cannot be opened) or EXIT_INTERRUPTED (also if
  /// Ctrl-C was pressed before the first bytes of the file were read).
  int exitStatus = 0;
};

/// A function that receives the progress of a reading. readSceneFile() calls it on the same thread:
/// `done` is the number of bytes that were read, and `total` the size of the file. It does not call
/// the function if the size is unknown. For formatFile(), see there.
using ReadingProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// Reads the file `name` within the limits of the arguments. "-" is standard input. If the command
/// has an InterruptScope, Ctrl-C ends the reading. Several threads may call the function. A NUL
/// byte or a wrong encoding may damage the text without an error of the reader. Such damage is an
/// error in `messages`. If `scene` is not null, reads into it, and the scene of the result stays
/// empty. Throws only std::bad_alloc.
SceneFile readSceneFile(const std::string& name, const ReadArguments& arguments = {},
                        const ReadingProgress& onProgress = {},
                        zn::korvo_sdk::interfaces::IScene* scene = nullptr);

/// Calls readSceneFile(), shows a progress line, and prints the messages to standard error. Ctrl-C
/// ends the reading. The caller must not have an InterruptScope.
SceneFile readAndReport(const std::string& name, const ReadArguments& arguments = {},
                        zn::korvo_sdk::interfaces::IScene* scene = nullptr);

}  // namespace vsa_tools
