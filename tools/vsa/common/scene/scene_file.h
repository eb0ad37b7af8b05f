// Reads one file into a scene for a command that inspects scenes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <vsa/read.h>
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// A file that was read, or the part of it that could be read.
struct SceneFile {
  /// The name for messages: "<stdin>" for "-".
  std::string name;
  /// The result of the reading. It contains no diagnostics, because they are in `messages`.
  vsa::ReadResult result;
  /// The lines for standard error, escaped by printable(), in the order in which they were found.
  /// Lines beyond the maximum that the arguments set, or beyond 1 MiB in total, are left out. The
  /// last line has the number of the lines left out.
  std::string messages;
  /// Links that could not be made: to a node or an output that does not exist, or from an input of
  /// another type.
  std::uint64_t brokenLinks = 0;
  double seconds = 0;
  /// EXIT_READ, EXIT_NOT_READ, EXIT_USAGE (a file that cannot be opened) or EXIT_INTERRUPTED.
  int exitStatus = 0;
};

/// Called on the thread that reads, with the number of bytes read and the size of the file.
using ReadingProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// Reads the file within the limits of the arguments; "-" is standard input. Ctrl-C ends the
/// reading if the command has an InterruptScope. May be called by several threads. Bytes that end
/// or damage the text without an error of the reader (a NUL, another encoding) are reported as `vsa
/// check` reports them. Throws std::bad_alloc only.
SceneFile readSceneFile(const std::string& name, const ReadArguments& arguments = {},
                        const ReadingProgress& onProgress = {});

/// Like readSceneFile(), but shows a progress line and prints the messages to standard error.
SceneFile readAndReport(const std::string& name, const ReadArguments& arguments = {});

}  // namespace vsa_tools
