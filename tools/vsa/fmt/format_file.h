// Checks one file, formats it, and checks the result.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/common/scene/scene_file.h"

namespace vsa_tools {

/// What the command does with the formatted text.
enum class FormatMode : std::uint8_t {
  Print,    ///< Writes it to standard output.
  Check,    ///< Only compares it with the file.
  Diff,     ///< Prints how it differs from the file.
  Replace,  ///< Replaces the file by it.
};

/// The result of formatting a file.
struct FormatOutcome {
  /// An ExitStatus.
  int status = 0;
  /// The lines to print to standard error.
  std::vector<std::string> messages;
  /// The difference to print, in mode Diff.
  std::string output;
};

/// Formats the file `name`. "-" is standard input. In mode Replace, the file remains unchanged if
/// it cannot be read completely or changes meanwhile, or if the formatted text has other tokens or
/// more bytes than the arguments allow. The tokens are compared before the file is replaced. Mode
/// Print writes to standard output, but nothing if the file cannot be read completely. The other
/// modes print nothing. Ctrl-C ends the formatting, see isInterrupted(). The text is read several
/// times. `onProgress` is called with the number of bytes read so far to check and format the text,
/// and with the number of bytes that both together read. For a large file, two threads call it,
/// also at the same time.
FormatOutcome formatFile(const std::string& name, FormatMode mode,
                         const ReadArguments& arguments = {},
                         const ReadingProgress& onProgress = {});

}  // namespace vsa_tools
