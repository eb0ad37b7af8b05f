// Formats one file, after it was checked, and checks the result.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/common/scene/scene_file.h"

namespace vsa_tools {

/// What is done with the formatted text.
enum class FormatMode : std::uint8_t {
  Print,    ///< It is written to standard output.
  Check,    ///< It is only compared with the file.
  Diff,     ///< Its difference from the text is printed.
  Replace,  ///< It replaces the file.
};

/// How the formatting of a file ended.
struct FormatOutcome {
  /// An ExitStatus.
  int status = 0;
  /// Whether the formatted text differs from the file.
  bool isChanged = false;
  /// Lines for standard error.
  std::vector<std::string> messages;
  /// The difference, in mode Diff.
  std::string output;
};

/// Formats the file `name`; "-" is standard input. A file is not changed if it cannot be read
/// completely, or if the formatted text has other tokens or another scene: both are compared before
/// a file is replaced. Mode Print writes to standard output; the other modes print nothing. Ctrl-C
/// ends the formatting, see isInterrupted(). The text is read several times. `onProgress` is called
/// with the bytes that were read so far, and the bytes of all these reads.
FormatOutcome formatFile(const std::string& name, FormatMode mode,
                         const ReadArguments& arguments = {},
                         const ReadingProgress& onProgress = {});

}  // namespace vsa_tools
