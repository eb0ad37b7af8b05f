// Opens the files that the command line names.
#pragma once

#include <memory>
#include <string>

#include "tools/vsa/input/inspected_source.h"

namespace vsa_tools {

/// An open file, or the reason why the file cannot be read.
struct InputFile {
  /// Null if nothing was opened.
  std::unique_ptr<InspectedSource> source;
  /// The system's error message. Empty on success.
  std::string problem;
};

/// Opens the file `name` and reads its first bytes. "-" is standard input. A directory can be
/// opened, but the first read fails and shows the problem. If isInterrupted() becomes true while
/// the source waits for input, the input ends with the error "interrupted".
InputFile openInput(const std::string& name);

/// Returns the name of an input for messages: "<stdin>" for "-".
std::string shownName(const std::string& name);

}  // namespace vsa_tools
