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
  /// Why the file cannot be read. Empty on success.
  std::string problem;
};

/// Opens the file `name` and reads its first bytes. "-" is standard input. If the file cannot be
/// opened or the first read fails, as for a directory, `problem` is set. If isInterrupted() is true
/// when the source has to wait for input, or becomes true meanwhile, the input ends with the error
/// "interrupted".
InputFile openInput(const std::string& name);

/// Returns the name of an input for messages: "<stdin>" for "-".
std::string shownName(const std::string& name);

}  // namespace vsa_tools
